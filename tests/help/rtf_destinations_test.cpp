#include <gtest/gtest.h>

#include "rtf_dump.h"

namespace kolvane::help {
namespace {

class RtfSkipped : public testing::TestWithParam<const char*> {};

TEST_P(RtfSkipped, IsNotTextOfTheDocument) {
  EXPECT_EQ(Read("a{\\" + std::string(GetParam()) + " x{\\b y\\par}\\'e4\\u937 ?\\}z}b"), "[ab]/");
}

INSTANTIATE_TEST_SUITE_P(Destinations, RtfSkipped,
                         testing::Values("*\\unheard", "*", "annotation", "filetbl", "fldinst", "fonttbl",
                                         "footer", "footerf", "footerl", "footerr", "footnote", "header",
                                         "headerf", "headerl", "headerr", "info", "listoverridetable",
                                         "listtable", "nonshppict", "object", "pict", "revtbl", "rsidtbl",
                                         "stylesheet", "tc", "xe"));

TEST(RtfDestinations, UnknownWordsAreSkippedAndTheirTextShown) {
  EXPECT_EQ(Read("a{\\unheard12 b}\\viewkind4\\sa200 c"), "[abc]/");
  EXPECT_EQ(Read("a\\B b\\PAR c"), "[abc]/");
}

TEST(RtfDestinations, FieldsShowTheirResult) {
  EXPECT_EQ(Read("{\\field{\\*\\fldinst HYPERLINK \"x\"}{\\fldrslt{\\b y}}}z"), "b[y][z]/");
}

TEST(RtfDestinations, BinaryDataHidesBraces) {
  EXPECT_EQ(Read("a{\\pict\\bin4 }}{{}b"), "[ab]/");
  EXPECT_EQ(Read("a\\bin4 }}{{b"), "[ab]/");
}

TEST(RtfDestinations, SkippingEndsWithItsGroup) {
  EXPECT_EQ(Read("{{\\info{\\title x}}a{\\*\\y{\\*\\z}}b}c"), "[abc]/");
}

}  // namespace
}  // namespace kolvane::help
