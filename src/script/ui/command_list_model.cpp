#include "script/ui/command_list_model.h"

#include <QColor>
#include <QFont>
#include <QTimerEvent>
#include <algorithm>
#include <utility>

#include "base/encoding.h"
#include "base/ui/qt_look.h"
#include "base/ui/qt_text.h"
#include "script/list_editing.h"
#include "script/texts.h"

namespace kolvane::script {
namespace {

constexpr int kFrameMs = 33;
constexpr qsizetype kMaxInToolTip = 2000;  // characters of the row; a tool tip cannot be scrolled

}  // namespace

CommandListModel::CommandListModel(CommandList& list, QObject* parent)
    : QAbstractTableModel(parent), list_(list) {
  list_.Observe(this);
}

CommandListModel::~CommandListModel() { list_.Observe(nullptr); }

QVariant CommandListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const int row = index.row() + 1;
  if (role == Qt::AccessibleDescriptionRole) return StateOf(row);
  if (index.column() == kMarkerColumn) return MarkOf(row, role);
  if (index.column() != kTextColumn) return {};
  if (role == kFindingRole) return WorstOf(row);
  if (role == kIndentRole)
    return row <= static_cast<int>(indents_.size()) ? indents_[static_cast<std::size_t>(row - 1)] : 0;
  if (role == Qt::DisplayRole || role == Qt::EditRole) return base::ToQt(list_.Text(row));
  return LookOf(row, role);
}

QVariant CommandListModel::LookOf(int row, int role) const {
  const Highlight* highlight = list_.HighlightOf(row);
  switch (role) {
    case Qt::ForegroundRole:
      return base::ToQColor(highlight != nullptr ? highlight->fore : list_.TextColor(row));
    case Qt::BackgroundRole:
      return highlight != nullptr ? QVariant(base::ToQColor(highlight->back)) : QVariant();
    case Qt::FontRole: {
      if (highlight == nullptr) return {};
      QFont font;  // only the weight is set: the view's family and size apply
      font.setBold(highlight->bold);
      return font;
    }
    case Qt::ToolTipRole:
      return ToolTipOf(row);
    default:
      return {};
  }
}

QVariant CommandListModel::MarkOf(int row, int role) const {
  const Highlight* highlight = list_.HighlightOf(row);
  const bool error = highlight != nullptr && *highlight == kErrorRow;
  const bool running = highlight != nullptr && !error;
  if (role == kMarkRole)
    return (list_.HasBreakpoint(row) ? kBreakpointMark : 0) | (running ? kRunningMark : 0) |
           (error ? kErrorMark : 0);
  if (role != Qt::AccessibleTextRole && role != Qt::ToolTipRole) return {};
  const QString why = ErrorOf(row);
  return StateOf(row) + (why.isEmpty() ? QString() : QStringLiteral(": ") + why);
}

// What sighted users see from the row's colours and marks.
QString CommandListModel::StateOf(int row) const {
  QStringList states;
  if (const Highlight* highlight = list_.HighlightOf(row)) {
    const bool error = *highlight == kErrorRow;
    states << base::ToQt(error ? texts::kErrorRow : texts::kRunningRow);
  }
  if (list_.HasBreakpoint(row)) states << base::ToQt(texts::kBreakpoint);
  if (const auto found = findings_.find(row); found != findings_.end()) states << found->second.text;
  return states.join(QStringLiteral(", "));
}

QString CommandListModel::ErrorOf(int row) const { return base::ToQt(list_.ErrorOf(row)); }

QString CommandListModel::ToolTipOf(int row) const {
  const std::string& text = list_.Text(row);
  QString shown = base::ToQt(text);
  if (shown.size() > kMaxInToolTip) shown = shown.left(kMaxInToolTip) + QStringLiteral("…");
  QStringList lines = {shown};
  const std::string_view outside = base::OutsideWindows1252(text);
  if (!outside.empty()) lines << base::ToQt(texts::NotInCodePage(outside));
  if (const auto found = findings_.find(row); found != findings_.end()) lines << found->second.text;
  if (const QString error = ErrorOf(row); !error.isEmpty()) lines << error;
  return lines.join(QLatin1Char('\n'));
}

CommandListModel::Worst CommandListModel::WorstOf(int row) const {
  const auto found = findings_.find(row);
  if (found == findings_.end()) return kNoFinding;
  return found->second.error ? kErrorFound : kHintFound;
}

void CommandListModel::ShowFindings(const std::vector<checker::Finding>& findings, std::vector<int> indents) {
  findings_.clear();
  for (const checker::Finding& finding : findings) {
    RowFindings& row = findings_[finding.row];
    row.error |= finding.kind == checker::FindingKind::kError;
    if (!row.text.isEmpty()) row.text += QLatin1Char('\n');
    row.text += base::ToQt(checker::FindingLine(finding));
  }
  indents_ = std::move(indents);
  Q_EMIT dataChanged(index(0, kMarkerColumn), index(kListRows - 1, kTextColumn));
}

bool CommandListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || index.column() != kTextColumn) return false;
  const PastedRows edited = ReplaceRow(list_, index.row() + 1, base::FromQt(value.toString()));
  last_edited_row_ = edited.last;
  Flush();
  if (edited.left_out > 0) Q_EMIT LinesLeftOut(edited.left_out);
  return true;
}

Qt::ItemFlags CommandListModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  return index.column() == kTextColumn ? flags | Qt::ItemIsEditable : flags;
}

QVariant CommandListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  return section == kTextColumn ? QStringLiteral("Befehlsliste") : QStringLiteral(" ");
}

void CommandListModel::RowsChanged(int first, int last) {
  first_changed_ = std::min(first_changed_, first);
  last_changed_ = std::max(last_changed_, last);
  Note();
}

void CommandListModel::CurrentRowChanged(int /*row*/) {
  current_moved_ = true;
  Note();
}

void CommandListModel::Note() {
  if (!list_.InUse()) return Flush();
  if (!frame_.isActive()) frame_.start(kFrameMs, this);
}

void CommandListModel::Flush() {
  frame_.stop();
  if (std::exchange(current_moved_, false)) Q_EMIT CurrentRowMoved(list_.current_row());
  if (last_changed_ < first_changed_) return;
  // The mark of a row changes as well as its text.
  const QModelIndex first = index(std::max(first_changed_, 1) - 1, kMarkerColumn);
  const QModelIndex last = IndexOf(std::min(last_changed_, kListRows));
  first_changed_ = kListRows + 1;
  last_changed_ = 0;
  Q_EMIT dataChanged(first, last);
}

void CommandListModel::timerEvent(QTimerEvent* event) {
  if (event->timerId() == frame_.timerId()) Flush();
}

}  // namespace kolvane::script
