#include "component/ini_value.h"

#include <gtest/gtest.h>

#include <QSettings>
#include <QTemporaryDir>
#include <random>

#include "base/encoding.h"
#include "base/temp_folder.h"

namespace kolvane::component {
namespace {

/// Compares with what QSettings writes and reads.
class IniValueTest : public testing::Test {
 protected:
  // One key per text, "k0", "k1" and so on, in one file.
  std::vector<std::string> WrittenByQt(const std::vector<std::string>& texts) {
    const QString path = Path();
    {
      QSettings settings(path, QSettings::IniFormat);
      for (std::size_t i = 0; i < texts.size(); ++i)
        settings.setValue(Key(i), QString::fromStdString(texts[i]));
    }
    const std::string bytes = base::ReadBytes(path.toStdString());
    std::vector<std::string> values;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const std::string key = "\nk" + std::to_string(i) + "=";
      const std::size_t begin = bytes.find(key) + key.size();
      values.push_back(bytes.substr(begin, bytes.find('\n', begin) - begin));
    }
    return values;
  }

  std::vector<std::string> ReadByQt(const std::vector<std::string>& values) {
    const QString path = Path();
    std::string bytes = "[T]\n";
    for (std::size_t i = 0; i < values.size(); ++i) bytes += "k" + std::to_string(i) + "=" + values[i] + "\n";
    base::WriteBytes(path.toStdString(), bytes);
    const QSettings settings(path, QSettings::IniFormat);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < values.size(); ++i)
      texts.push_back(settings.value(Key(i)).toString().toStdString());
    return texts;
  }

  // Short random texts of these letters.
  std::vector<std::string> RandomTexts(const std::vector<std::string>& letters) {
    std::vector<std::string> texts;
    for (int i = 0; i < 3000; ++i) {
      std::string text;
      for (std::size_t left = random_() % 8; left > 0; --left) text += letters[random_() % letters.size()];
      texts.push_back(text);
    }
    return texts;
  }

 private:
  // QSettings caches files by name.
  QString Path() { return dir_.path() + QStringLiteral("/%1.ini").arg(files_++); }
  static QString Key(std::size_t number) { return QStringLiteral("T/k%1").arg(number); }

  QTemporaryDir dir_;
  int files_ = 0;
  std::mt19937 random_{1};
};

TEST_F(IniValueTest, EveryCharacterOfTheCodePageSurvives) {
  for (int first = 0; first < 256; ++first) {
    for (const char* second : {"", "0", "a", " ", "\"", "\r\n"}) {
      const std::string text = base::FromWindows1252(std::string(1, static_cast<char>(first))) + second;
      const std::string value = EncodeIniValue(text);
      EXPECT_EQ(DecodeIniValue(value), text) << first;
      EXPECT_EQ(value.find_first_of(std::string_view("\0\r\n", 3)), value.npos) << first;
    }
  }
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  all = base::FromWindows1252(all);
  EXPECT_EQ(DecodeIniValue(EncodeIniValue(all)), all);
}

TEST_F(IniValueTest, TextsAreWrittenAsQtWritesThem) {
  std::vector<std::string> texts = RandomTexts({std::string(1, '\0'),
                                                "\x01",
                                                "\t",
                                                "\r",
                                                "\n",
                                                "\x1b",
                                                "\x7f",
                                                "a",
                                                "7",
                                                "x",
                                                " ",
                                                "\"",
                                                "\\",
                                                ";",
                                                ",",
                                                "=",
                                                "@",
                                                "(",
                                                ")",
                                                "ä",
                                                "\xC2\x81",
                                                "€",
                                                "#",
                                                "%",
                                                "'",
                                                "?"});
  for (const char* text : {"@Invalid()", "@String(x)", "@@", "\t", " ", ""}) texts.emplace_back(text);
  const std::vector<std::string> by_qt = WrittenByQt(texts);
  const std::vector<std::string> read = ReadByQt(by_qt);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    ASSERT_EQ(EncodeIniValue(texts[i]), by_qt[i]);
    ASSERT_EQ(DecodeIniValue(by_qt[i]), texts[i]) << by_qt[i];
    ASSERT_EQ(read[i], texts[i]) << by_qt[i];
  }
}

TEST_F(IniValueTest, ValuesAreReadAsQtReadsThem) {
  // No commas: they make lists in QSettings. There, an open quote or escape continues in the next line.
  std::vector<std::string> values = RandomTexts(
      {"a",   "b1",  "9",   " ", "\t", "\"q\"", "\"; \"", "\\\\",     "\\\"", "\\x41", "\\x", "\\101", "\\n",
       "\\t", "\\z", "\\;", ";", "=",  "@",     "@@",     "@String(", ")",    "ä",     "€",   "[",     "]"});
  const std::vector<std::string> by_qt = ReadByQt(values);
  for (std::size_t i = 0; i < values.size(); ++i) ASSERT_EQ(DecodeIniValue(values[i]), by_qt[i]) << values[i];
}

TEST_F(IniValueTest, AnUnknownEscapeIncludesItsWholeCharacter) {
  EXPECT_EQ(DecodeIniValue("a\\äb"), "ab");
  EXPECT_EQ(DecodeIniValue("a\\\xE4"
                           "b"),
            "ab");
  EXPECT_EQ(DecodeIniValue("\\€"), "");
}

TEST_F(IniValueTest, AnOpenQuoteEndsWithTheLine) {
  EXPECT_EQ(DecodeIniValue("\"a;b"), "a;b");
  EXPECT_EQ(DecodeIniValue("a\\"), "a");
  EXPECT_EQ(DecodeIniValue("a\\x"), "a");
  EXPECT_EQ(DecodeIniValue("@String(a"), "@String(a");
  EXPECT_EQ(DecodeIniValue(""), "");
}

TEST_F(IniValueTest, ACommaIsACharacterLikeAnyOther) {
  EXPECT_EQ(DecodeIniValue("Halle 2, Platz 3"), "Halle 2, Platz 3");
}

TEST_F(IniValueTest, BytesThatAreNotUtf8AreReadAsWindows1252) {
  EXPECT_EQ(DecodeIniValue("Gr\xF6\xDF"
                           "e \x80"),
            "Größe €");
  EXPECT_EQ(DecodeIniValue("ä\xC3"), "Ã¤Ã");
}

TEST_F(IniValueTest, AHalfSurrogatePairIsReplaced) {
  EXPECT_EQ(DecodeIniValue("\\xd83d"), "\xEF\xBF\xBD");
  EXPECT_EQ(DecodeIniValue("\\x12345678e4"), std::string("\xE7\xA3\xA4"));
}

TEST_F(IniValueTest, AMessageShowsNoControlCharactersAndNoMoreThanEightyOthers) {
  EXPECT_EQ(ShownIniValue("a\r\n\x1b\"ä"), "a\\r\\n\\x1b\"ä");
  EXPECT_EQ(ShownIniValue(std::string("1\0", 2)), "1\\0");
  std::string eighty;
  for (int i = 0; i < 80; ++i) eighty += "ä";
  EXPECT_EQ(ShownIniValue(eighty), eighty);
  EXPECT_EQ(ShownIniValue(eighty + "ä"), eighty + "…");
}

}  // namespace
}  // namespace kolvane::component
