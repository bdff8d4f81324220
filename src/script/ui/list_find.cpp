#include "script/ui/list_find.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "base/ui/qt_text.h"

namespace kolvane::script {

ListFind::ListFind(CommandGrid* grid) : FindTarget(grid), grid_(grid) {
  connect(grid_->model(), &QAbstractItemModel::dataChanged, this, &ListFind::ListChanged);
}

void ListFind::Search(std::shared_ptr<const pane::Matcher> matcher) {
  if (matcher_ == nullptr) origin_ = grid_->currentIndex().row() + 1;
  matcher_ = std::move(matcher);
  current_.reset();
  UpdateHits();
  if (!hits_.empty()) GoTo(FirstFrom(origin_, 0) % hits_.size());
  Q_EMIT StateChanged();
}

void ListFind::UpdateHits() {
  const CommandList& list = grid_->list();
  revision_ = list.revision();
  hits_.clear();
  std::vector<double> marks;
  for (int row = 1; matcher_ != nullptr && row <= list.LastUsedRow(); ++row) {
    for (const pane::PaneRange& range : matcher_->FindIn(list.Text(row) + '\n'))
      hits_.push_back({row, range});
    if (!hits_.empty() && hits_.back().row == row) marks.push_back((row - 0.5) / kListRows);
  }
  if (current_ && std::ranges::find(hits_, *current_) == hits_.end()) current_.reset();
  grid_->ShowHits(
      hits_.empty() ? RowHitsOf() : [this](int row) { return HitsOf(row); }, marks);
}

void ListFind::ListChanged() {
  if (matcher_ == nullptr || revision_ == grid_->list().revision()) return;
  UpdateHits();
  Q_EMIT StateChanged();
}

RowHits ListFind::HitsOf(int row) const {
  RowHits hits;
  for (std::size_t i = FirstFrom(row, 0); i < hits_.size() && hits_[i].row == row; ++i)
    hits.push_back({hits_[i].range, current_ == hits_[i]});
  return hits;
}

std::size_t ListFind::FirstFrom(int row, std::size_t at) const {
  const auto hit = std::ranges::lower_bound(hits_, std::tuple(row, at), {}, [](const Hit& candidate) {
    return std::tuple(candidate.row, candidate.range.begin);
  });
  return static_cast<std::size_t>(hit - hits_.begin());
}

void ListFind::GoTo(std::size_t hit) {
  current_ = hits_[hit];
  grid_->GoToRow(current_->row);
  grid_->viewport()->update();
  Q_EMIT StateChanged();
}

void ListFind::GoToNext() {
  if (hits_.empty()) return;
  const int row = grid_->currentIndex().row() + 1;
  const bool here = current_ && current_->row == row;
  GoTo((here ? FirstFrom(row, current_->range.end) : FirstFrom(row, 0)) % hits_.size());
}

void ListFind::GoToPrevious() {
  if (hits_.empty()) return;
  const int row = grid_->currentIndex().row() + 1;
  const bool here = current_ && current_->row == row;
  const std::size_t from = FirstFrom(row, here ? current_->range.begin : 0);
  GoTo((from + hits_.size() - 1) % hits_.size());
}

pane::FindState ListFind::State() const {
  pane::FindState state{.count = hits_.size()};
  if (current_) state.current = FirstFrom(current_->row, current_->range.begin) + 1;
  return state;
}

void ListFind::ReplaceCurrent(const QString& with) {
  if (!current_ || !CanReplace()) return;
  const Hit hit = *current_;
  const std::string& line = grid_->list().Text(hit.row);
  const std::string put = matcher_->Replacement(line, hit.range, base::FromQt(with));
  grid_->list().SetText(hit.row, line.substr(0, hit.range.begin) + put + line.substr(hit.range.end));
  UpdateHits();
  if (!hits_.empty()) GoTo(FirstFrom(hit.row, hit.range.begin + put.size()) % hits_.size());
  Q_EMIT StateChanged();
}

int ListFind::ReplaceAll(const QString& with) {
  if (hits_.empty() || !CanReplace()) return 0;
  const int count = static_cast<int>(hits_.size());
  const int first = hits_.front().row;
  std::vector<std::string> texts = grid_->list().Texts(first, hits_.back().row);
  for (std::string& text : texts) text = pane::ReplaceHits(*matcher_, text, base::FromQt(with));
  grid_->list().SetTexts(first, texts);
  UpdateHits();
  Q_EMIT StateChanged();
  return count;
}

}  // namespace kolvane::script
