// The text form of files of any version.

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>

#include "CL/text_form.h"
#include "tests/platform/core/file/kinds.h"
#include "tests/support/bytes.h"
#include "zuna_midi/text_form.h"

namespace {

using zuna_test::LogKind;
using zuna_test::MessageOf;
using zuna_test::ShowKind;

template <typename Model>
std::string Text(const Model& model, cmn::FileVersion stated) {
  std::ostringstream os;
  WriteTextForm(os, model, stated);
  return os.str();
}

zuna_midi::ShowData Read(ShowKind, const std::string& text, cmn::FileVersion& stated) {
  std::istringstream is(text);
  return zuna_midi::ReadTextForm(is, stated);
}
CL::ChangeLog Read(LogKind, const std::string& text, cmn::FileVersion& stated) {
  std::istringstream is(text);
  return CL::ReadTextForm(is, stated);
}

template <typename Kind>
class TextForm : public testing::Test {};
using Kinds = testing::Types<ShowKind, LogKind>;
TYPED_TEST_SUITE(TextForm, Kinds);

TYPED_TEST(TextForm, StatesAnyVersionAndComesBack) {
  std::mt19937 random(1);
  for (int i = 0; i < 40; ++i) {
    const auto model = TypeParam::Random(random);
    for (const cmn::FileVersion version : zuna_test::Versions<TypeParam>()) {
      const std::string text = Text(model, version);
      cmn::FileVersion stated;
      const auto read = Read(TypeParam(), text, stated);
      EXPECT_EQ(stated, version);
      EXPECT_EQ(Text(read, version), text);
      EXPECT_EQ(zuna_test::Write(read, version), zuna_test::Write(model, version));
    }
  }
}

TYPED_TEST(TextForm, IsTheFileWhereItStatesTheVersionOfText) {
  const auto model = TypeParam::Sample();
  EXPECT_EQ(Text(model, {2, 0}), zuna_test::Write(model, {2, 0}));
}

TYPED_TEST(TextForm, DiffersInTheVersionAlone) {
  const auto model = TypeParam::Sample();
  std::string text = Text(model, {1, 2});
  const std::size_t at = text.find("1.2");
  ASSERT_NE(at, std::string::npos);
  text.replace(at, 3, "2.0");
  EXPECT_EQ(text, zuna_test::Write(model, {2, 0}));
}

TYPED_TEST(TextForm, IsNoFileOfTheVersionOfTextWhereItStatesAnother) {
  const std::string text = Text(TypeParam::Sample(), {1, 2});
  EXPECT_NE(zuna_test::ReadError<typename TypeParam::Model>(text), "");
}

TYPED_TEST(TextForm, RefusesVersionsThatTheKindDoesNotHave) {
  cmn::FileVersion stated;
  std::string text = Text(TypeParam::Sample(), {1, 2});
  text.replace(text.find("1.2"), 3, "0.0");
  const std::string kind = TypeParam::kKind == cmn::FileKind::kShow ? "Show" : "Log";
  const std::string list = TypeParam::kKind == cmn::FileKind::kShow ? "1.0, 1.1 and 1.2" : "1.1 and 1.2";
  const std::string rest = "; the supported versions are " + list + " (binary) and 2.0 (text)";
  EXPECT_EQ(MessageOf<cmn::UnsupportedVersionError>([&] { Read(TypeParam(), text, stated); }),
            "fileVersion: " + kind + " file version 0.0 is not supported in the text form (at byte " +
                std::to_string(text.find("0.0") + 3) + ")" + rest);
  EXPECT_EQ(MessageOf<cmn::UnsupportedVersionError>([&] {
              Text(TypeParam::Sample(), {3, 0});
            }),
            kind + " file version 3.0 is not supported for output" + rest);
}

TEST(TextFormOfAShow, IsNotWrittenWithoutATimeline) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  show.songs().begin()->second->timeline = nullptr;
  EXPECT_NE(MessageOf<std::logic_error>([&] { Text(show, {1, 2}); }), "");
}

TEST(TextFormOfALog, StatesItsVersionInTheModel) {
  cmn::FileVersion stated;
  const CL::ChangeLog log = Read(LogKind(), Text(zuna_test::SampleLog(), {1, 1}), stated);
  EXPECT_EQ(log.file_version, (cmn::FileVersion{1, 1}));
}

}  // namespace
