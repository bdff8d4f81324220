#include "base/ui/qt_look.h"

#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QFontInfo>
#include <QPalette>
#include <QPushButton>

#include "base/ui/qt_text.h"

namespace kolvane::base {
namespace {

bool ChooseColor(QWidget* parent, const QString& title, QColor& color) {
  QColorDialog dialog(color, parent);
  dialog.setObjectName(QStringLiteral("ColorDialog"));
  dialog.setWindowTitle(title);
  if (dialog.exec() != QDialog::Accepted) return false;
  color = dialog.selectedColor();
  return true;
}

void ShowColor(QPushButton* button, const QColor& color) {
  QPixmap swatch(button->iconSize());
  swatch.fill(color);
  button->setIcon(swatch);
}

// The text colour belongs to the font here, but Qt's dialog has no field for it.
void AddColorButton(QFontDialog& dialog, QColor& color) {
  auto* button = dialog.findChild<QDialogButtonBox*>()->addButton(QStringLiteral("&Farbe..."),
                                                                  QDialogButtonBox::ActionRole);
  button->setObjectName(QStringLiteral("FontColor"));
  ShowColor(button, color);
  QObject::connect(button, &QPushButton::clicked, &dialog, [&dialog, &color, button] {
    if (ChooseColor(&dialog, QStringLiteral("Schriftfarbe"), color)) ShowColor(button, color);
  });
}

// The dialog lists installed families and their styles only, and would select arbitrary ones for any others.
// A font without a style has the translated word for it, "Fett", which is none of its family's.
QFont InstalledFont(QFont font) {
  const QFontInfo installed(font);
  font.setFamily(installed.family());
  font.setStyleName(installed.styleName());
  return font;
}

}  // namespace

QColor ToQColor(Color color) {
  constexpr int kByte = 0xFF;
  return QColor(color & kByte, (color >> 8) & kByte, (color >> 16) & kByte);
}

QFont FontOf(const Look& look) {
  QFont font(ToQt(look.font_name), look.font_size);
  font.setBold(look.font_bold);
  font.setStyleHint(QFont::TypeWriter);
  return font;
}

bool ChooseFont(QWidget* parent, Look& look) {
  const QFont before = InstalledFont(FontOf(look));
  QFontDialog dialog(before, parent);
  dialog.setObjectName(QStringLiteral("FontDialog"));
  dialog.setWindowTitle(QStringLiteral("Schriftart"));
  dialog.setOption(QFontDialog::DontUseNativeDialog);
  QColor color = ToQColor(look.font_color);
  AddColorButton(dialog, color);
  if (dialog.exec() != QDialog::Accepted) return false;
  const QFont font = dialog.selectedFont();
  if (font.family() != before.family()) look.font_name = FromQt(font.family());
  look.font_size = static_cast<std::int16_t>(QFontInfo(font).pointSize());
  look.font_bold = font.bold();
  look.font_color = FromQt(color);
  return true;
}

bool ChooseBackColor(QWidget* parent, Look& look) {
  QColor color = ToQColor(look.back_color);
  if (!ChooseColor(parent, QStringLiteral("Hintergrundfarbe"), color)) return false;
  look.back_color = FromQt(color);
  return true;
}

void EnsureReadableHints() {
  QPalette palette = QApplication::palette();
  const auto is_lighter = [back = palette.color(QPalette::Base).lightness()](const QColor& color) {
    return color.lightness() > back;
  };
  QColor hint = palette.color(QPalette::Text);
  if (is_lighter(hint) == is_lighter(palette.color(QPalette::PlaceholderText))) return;
  hint.setAlpha(128);
  palette.setColor(QPalette::PlaceholderText, hint);
  QApplication::setPalette(palette);
}

}  // namespace kolvane::base
