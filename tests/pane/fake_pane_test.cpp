#include "pane/fake_pane.h"

#include "pane/pane_contract.h"

namespace kolvane::pane {
namespace {

struct Fake {
  Pane& pane() { return fake; }
  std::string Text() const {
    std::string text = fake.text;
    std::erase(text, '\r');
    return text.substr(1);
  }
  FakePane fake;
};

struct RealTextOnly {
  Pane& pane() { return fake; }
  std::string Text() const { return fake.text.Text("\n").substr(1); }
  TextPane fake;
};

using Fakes = testing::Types<Fake, RealTextOnly>;
INSTANTIATE_TYPED_TEST_SUITE_P(Fakes, PaneContract, Fakes);

}  // namespace
}  // namespace kolvane::pane
