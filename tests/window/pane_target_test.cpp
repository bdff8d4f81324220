#include <unistd.h>

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QLibraryInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTest>
#include <QTranslator>

#include "device/ui/connection_dialog.h"
#include "gui/pdf_content.h"
#include "window/window_fixture.h"

namespace kolvane::window {
namespace {

class PaneTargetTest : public WindowFixture {
 protected:
  std::string file_ = folder_.Path("a.LOG");
};

TEST_F(PaneTargetTest, SavesTheWholeTextAndALineEnd) {
  AddLine("Größe", LineKind::kCommand);
  AddLine("5 €");
  for (const char* item : {"mnuSaveTerminal", "mnuSaveAs"}) {
    std::filesystem::remove(file_);
    ChooseFile(folder_.Path("a"));
    Press(item);
    EXPECT_EQ(base::ReadBytes(file_), "\r\nGr\xF6\xDF\x65\r\n5 \x80\r\n") << item;
  }
}

TEST_F(PaneTargetTest, AnEmptyPaneIsSavedAsALineEnd) {
  ChooseFile(file_);
  Press("mnuSaveTerminal");
  EXPECT_EQ(base::ReadBytes(file_), "\r\n");
}

TEST_F(PaneTargetTest, ACancelledSaveWritesNothing) {
  Cancel<QFileDialog>();
  Press("mnuSaveTerminal");
  EXPECT_EQ(dialogs_, 1);
  EXPECT_TRUE(folder_.Names().empty());
}

TEST_F(PaneTargetTest, AFailedSaveIsReported) {
  AnswerBoxes();
  ChooseFile("/nirgends/a.LOG");
  Press("mnuSaveTerminal");
  EXPECT_EQ(boxes_.texts().join('/'),
            "Die Datei „/nirgends/a.LOG“ kann nicht geschrieben werden: Datei oder Ordner nicht gefunden");
}

TEST_F(PaneTargetTest, AFileThatExistsIsReplacedAfterAQuestion) {
  base::WriteBytes(file_, "old and longer");
  AnswerBoxes();
  ChooseFile(file_);
  Press("mnuSaveTerminal");
  EXPECT_EQ(boxes_.texts().size(), 1);
  EXPECT_EQ(base::ReadBytes(file_), "\r\n");
}

TEST_F(PaneTargetTest, AFullDiskIsReported) {
  std::filesystem::create_symlink("/dev/full", file_);
  AnswerBoxes();
  ChooseFile(file_);
  Press("mnuSaveTerminal");
  ASSERT_FALSE(boxes_.texts().isEmpty());
  EXPECT_EQ(boxes_.texts().last(), QString::fromStdString("Die Datei „" + file_ +
                                                          "“ kann nicht geschrieben werden: "
                                                          "Der Datenträger ist voll"));
}

TEST_F(PaneTargetTest, ATextFileReplacesTheText) {
  AddLine("before", LineKind::kCommand);
  const std::string name = folder_.Path("a.TXT");
  base::WriteBytes(name, std::string("Gr\xF6\xDF\x65\r\n\0end\r\n", 13));
  for (const char* item : {"mnuOpenTextFile", "mnuOpen"}) {
    ChooseFile(name);
    Press(item);
    EXPECT_EQ(PaneText(), QString::fromUtf8("Größe\n\0end\n", 13)) << item;
    AddLine("after");
    EXPECT_TRUE(PaneText().endsWith("\n\nafter")) << item;
  }
}

TEST_F(PaneTargetTest, ALongerTextThatReplacesAShorterOneIsShownCompletely) {
  std::string bytes;
  for (int i = 0; i < 20000; ++i) bytes += "0123456789\r\n";
  base::WriteBytes(folder_.Path("a.TXT"), bytes);
  ChooseFile(folder_.Path("a.TXT"));
  Press("mnuOpenTextFile");
  EXPECT_EQ(Pane()->text().store().LineCount(), 20001u);
  Pane()->EnsureVisible(Pane()->text().Length());
  EXPECT_TRUE(Pane()->viewport()->rect().intersects(Pane()->CharacterRect(Pane()->text().Length())));
}

TEST_F(PaneTargetTest, ACancelledOrFailedLoadKeepsTheText) {
  AddLine("before");
  Cancel<QFileDialog>();
  Press("mnuOpenTextFile");
  EXPECT_EQ(dialogs_, 1);
  AnswerBoxes();
  base::WriteBytes(folder_.Path("a.TXT"), "new");
  // The file disappears between the choice and the reading.
  OnDialog<QFileDialog>([this](QFileDialog& dialog) {
    dialog.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(folder_.Path("a.TXT")));
    QObject::connect(&dialog, &QDialog::accepted, &window_,
                     [this] { std::filesystem::remove(folder_.Path("a.TXT")); });
    static_cast<QDialog&>(dialog).accept();
  });
  Press("mnuOpenTextFile");
  EXPECT_EQ(boxes_.texts().join('/'),
            QString::fromStdString("Die Datei „" + folder_.Path("a.TXT") +
                                   "“ kann nicht gelesen werden: Datei oder Ordner nicht gefunden"));
  EXPECT_EQ(PaneText(), "\nbefore");
}

/// The left margin of a PDF file's first page in millimetres: its content starts with the scale and the
/// origin, in points.
double LeftMargin(const std::string& pdf) {
  const QRegularExpression matrix(" ([0-9.]+) [0-9.]+ cm");
  return matrix.match(gui::PdfContent(pdf)).captured(1).toDouble() / 72 * 25.4;
}

TEST_F(PaneTargetTest, PrintsToAPdfFileIfThereIsNoPrinter) {
  AddLine("command", LineKind::kCommand);
  for (const char* item : {"TB_PRINT", "mnuPrintTermWindow", "mnuPrint"}) {
    const std::string name = folder_.Path(std::string(item) + ".PDF");
    ChooseFile(name);
    Press(item);
    const std::string bytes = base::ReadBytes(name);
    EXPECT_TRUE(bytes.starts_with("%PDF")) << item;
    EXPECT_NE(bytes.find("/Type /Page\n"), bytes.npos) << item;
    EXPECT_NEAR(LeftMargin(bytes), 15, 0.4) << item;
  }
}

TEST_F(PaneTargetTest, ACancelledPrintWritesNothing) {
  Cancel<QFileDialog>();
  Press("TB_PRINT");
  EXPECT_EQ(dialogs_, 1);
  EXPECT_TRUE(folder_.Names().empty());
}

TEST_F(PaneTargetTest, AFailedPrintIsReported) {
  AnswerBoxes();
  ChooseFile("/nirgends/a.PDF");
  Press("TB_PRINT");
  EXPECT_EQ(boxes_.texts().join('/'),
            "Die Datei „/nirgends/a.PDF“ kann nicht geschrieben werden: Datei oder Ordner nicht gefunden");
}

TEST_F(PaneTargetTest, AFontIsShownAndKept) {
  OnDialog<QFontDialog>([](QFontDialog& dialog) {
    EXPECT_EQ(dialog.objectName(), "FontDialog");
    EXPECT_EQ(dialog.windowTitle(), "Schriftart");
    EXPECT_EQ(dialog.currentFont().pointSize(), 10);
    QFont font("DejaVu Sans Mono", 14);
    font.setBold(true);
    dialog.setCurrentFont(font);
    dialog.accept();
  });
  Press("mnuFont");
  EXPECT_EQ(settings_.pane.font_name, "DejaVu Sans Mono");
  EXPECT_EQ(settings_.pane.font_size, 14);
  EXPECT_TRUE(settings_.pane.font_bold);
  EXPECT_EQ(settings_.pane.font_color, 0);
  EXPECT_EQ(Pane()->font().family(), "DejaVu Sans Mono");
  EXPECT_EQ(Pane()->font().pointSize(), 14);
  EXPECT_TRUE(Pane()->font().bold());
}

TEST_F(PaneTargetTest, TheFontDialogAlsoHasTheTextColour) {
  OnDialog<QFontDialog>([this](QFontDialog& dialog) {
    OnDialog<QColorDialog>([](QColorDialog& colors) {
      EXPECT_EQ(colors.windowTitle(), "Schriftfarbe");
      colors.setCurrentColor(QColor(1, 2, 3));
      colors.accept();
    });
    dialog.findChild<QPushButton*>("FontColor")->click();
    dialog.accept();
  });
  Press("mnuFont");
  EXPECT_EQ(dialogs_, 2);
  EXPECT_EQ(settings_.pane.font_color, 0x030201);
  EXPECT_EQ(Pane()->textColor(), QColor(1, 2, 3));
}

TEST_F(PaneTargetTest, ABackgroundColourIsShownAndKept) {
  OnDialog<QColorDialog>([](QColorDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Hintergrundfarbe");
    EXPECT_EQ(dialog.currentColor(), QColor(Qt::white));
    dialog.setCurrentColor(QColor(255, 250, 16));
    dialog.accept();
  });
  Press("mnuBackColor");
  EXPECT_EQ(settings_.pane.back_color, 0x10FAFF);
  EXPECT_EQ(Pane()->backgroundColor(), QColor(255, 250, 16));
}

TEST_F(PaneTargetTest, CancelledDialogsChangeNoAppearance) {
  Cancel<QFontDialog>();
  Press("mnuFont");
  Cancel<QColorDialog>();
  Press("mnuBackColor");
  EXPECT_EQ(dialogs_, 2);
  EXPECT_EQ(settings_.pane.font_name, "Courier New");
  EXPECT_EQ(settings_.pane.font_size, 10);
  EXPECT_EQ(settings_.pane.back_color, 16777215);
}

TEST_F(PaneTargetTest, TheCaptionNamesTheConnection) {
  EXPECT_EQ(window_.windowTitle(), "Kolvane Terminal");
  Press("TB_CONNECT");
  EXPECT_EQ(window_.windowTitle(), "Kolvane Terminal - TCP/IP: 10.0.0.5, Port 7");
  Press("TB_CONNECT");
  EXPECT_EQ(window_.windowTitle(), "Kolvane Terminal");
}

TEST_F(PaneTargetTest, AnotherFontDoesNotChangeTheText) {
  AddLine("text");
  OnDialog<QFontDialog>([](QFontDialog& dialog) { dialog.accept(); });
  Press("mnuFont");
  EXPECT_EQ(PaneText(), "\ntext");
  EXPECT_EQ(settings_.pane.font_name, "Courier New");
}

// Qt's own words for a style, "Fett", are not those of the font.
TEST_F(PaneTargetTest, AConfirmedFontStaysAsBoldAsItWas) {
  QTranslator german;
  ASSERT_TRUE(german.load("qtbase_de", QLibraryInfo::path(QLibraryInfo::TranslationsPath)));
  QApplication::installTranslator(&german);
  const auto confirm = [this](bool bold) {
    OnDialog<QFontDialog>([bold](QFontDialog& dialog) {
      EXPECT_EQ(dialog.currentFont().bold(), bold);
      EXPECT_FALSE(QFontInfo(dialog.currentFont()).italic());
      dialog.accept();
    });
    Press("mnuFont");
  };
  confirm(false);
  EXPECT_FALSE(settings_.pane.font_bold);
  OnDialog<QFontDialog>([](QFontDialog& dialog) {
    QFont font = dialog.currentFont();
    font.setStyleName("Bold");
    dialog.setCurrentFont(font);
    dialog.accept();
  });
  Press("mnuFont");
  ASSERT_TRUE(settings_.pane.font_bold);
  confirm(true);
  EXPECT_TRUE(settings_.pane.font_bold);
}

TEST_F(PaneTargetTest, TheEmptyPaneSaysHowToStart) {
  const auto hint = [this] { return Pane()->placeholderText(); };
  EXPECT_TRUE(hint().contains("„Verbindung konfigurieren...“"));
  EXPECT_TRUE(hint().contains("„TCP/IP: 10.0.0.5, Port 7“")) << hint().toStdString();
  EXPECT_EQ(PaneText(), "");
  OnDialog<device::ConnectionDialog>([](QDialog& dialog) {
    dialog.findChild<QRadioButton*>("Port_7")->click();
    dialog.findChild<QPushButton*>("Command1")->click();
  });
  Press("mnuConfigureConnection");
  EXPECT_TRUE(hint().contains("„Offline“")) << hint().toStdString();
  Press("mnuConnect");
  EXPECT_TRUE(hint().startsWith("Unten einen Befehl eingeben")) << hint().toStdString();
  EXPECT_EQ(PaneText(), "");
}

TEST_F(PaneTargetTest, ThePaneDoesNotMentionAConnectionMadeByTheHost) {
  device_.OperMode = 0;
  window_.Load();
  EXPECT_FALSE(Pane()->placeholderText().contains("Verbindung"));
}

TEST_F(PaneTargetTest, ADroppedTextFileIsLoaded) {
  base::WriteBytes(folder_.Path("a.TXT"),
                   "gr\xF6\xDF"
                   "er\r\n2");
  AddLine("alt");
  Q_EMIT Pane()->fileDropped(QString::fromStdString(folder_.Path("a.TXT")));
  QApplication::processEvents();
  EXPECT_EQ(PaneText(), "größer\n2");
  AnswerBoxes();
  Q_EMIT Pane()->fileDropped(QString::fromStdString(folder_.Path("fehlt")));
  QApplication::processEvents();
  ASSERT_EQ(boxes_.texts().size(), 1);
  EXPECT_TRUE(boxes_.texts()[0].contains("kann nicht gelesen werden"));
  EXPECT_EQ(PaneText(), "größer\n2");
}

TEST_F(PaneTargetTest, ClearAllCanBeUndone) {
  AddLine("one");
  Press("mnuClearAll");
  EXPECT_EQ(PaneText(), "");
  QTest::keyClick(Pane(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(PaneText(), "\none");
}

TEST_F(PaneTargetTest, TabIntoThePaneMakesItTheTargetOfTheMenu) {
  AddLine("text");
  for (const Qt::FocusReason reason : {Qt::TabFocusReason, Qt::BacktabFocusReason}) {
    Q_EMIT Find<script::CommandGrid>("CommandScript")->Touched();
    QFocusEvent tab(QEvent::FocusIn, reason);
    QApplication::sendEvent(Pane(), &tab);
    Pane()->Select(0, 0);
    Press("mnuSelectAll");
    EXPECT_EQ(Pane()->selectedText(), "\ntext");
  }
}

}  // namespace
}  // namespace kolvane::window
