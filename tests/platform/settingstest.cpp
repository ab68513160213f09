#include "platform/settings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "support/errortext.h"
#include "support/temporaryfolder.h"

namespace qmrules::platform {
namespace {

using test::TemporaryFolder;

using test::ErrorText;

struct MemorySettingsPlace {
  std::unique_ptr<UserSettings> settings = std::make_unique<MemorySettings>();
};
struct JsonSettingsPlace {
  TemporaryFolder folder;
  std::unique_ptr<UserSettings> settings = std::make_unique<JsonUserSettings>(folder.File("settings.json"));
};

template <class Place>
class UserSettingsContract : public testing::Test {
 protected:
  Place place_;
  UserSettings& settings_ = *place_.settings;
};

using SettingsPlaces = testing::Types<MemorySettingsPlace, JsonSettingsPlace>;
TYPED_TEST_SUITE(UserSettingsContract, SettingsPlaces);

TYPED_TEST(UserSettingsContract, UnsetSettingGivesTheDefault) {
  EXPECT_EQ(this->settings_.Get("Form", "Splitter", "0.5"), "0.5");
  this->settings_.Set("Form", "Other", "x");
  EXPECT_EQ(this->settings_.Get("Form", "Splitter", "0.5"), "0.5");
}

TYPED_TEST(UserSettingsContract, SetSettingIsGiven) {
  this->settings_.Set("Form", "Splitter", "1|2");
  EXPECT_EQ(this->settings_.Get("Form", "Splitter", "0.5"), "1|2");
  this->settings_.Set("Form", "Splitter", "3");
  EXPECT_EQ(this->settings_.Get("Form", "Splitter", "0.5"), "3");
}

TYPED_TEST(UserSettingsContract, EmptyTextIsASetting) {
  this->settings_.Set("Form", "Splitter", "");
  EXPECT_EQ(this->settings_.Get("Form", "Splitter", "0.5"), "");
}

TYPED_TEST(UserSettingsContract, NamesCompareInAnyCase) {
  this->settings_.Set("Form", "Größe", "1");
  EXPECT_EQ(this->settings_.Get("FORM", "GRÖßE", ""), "1");
  this->settings_.Set("form", "größe", "2");
  EXPECT_EQ(this->settings_.Get("Form", "Größe", ""), "2");
}

TYPED_TEST(UserSettingsContract, SectionsAreApart) {
  this->settings_.Set("One", "Name", "1");
  this->settings_.Set("Two", "Name", "2");
  EXPECT_EQ(this->settings_.Get("One", "Name", ""), "1");
  EXPECT_EQ(this->settings_.Get("Two", "Name", ""), "2");
}

TYPED_TEST(UserSettingsContract, AnyTextIsKept) {
  const std::string text = "quote \" backslash \\ line\r\n tab\t 日本 😀 \x01";
  this->settings_.Set("Form\\Path", "a\"b", text);
  EXPECT_EQ(this->settings_.Get("Form\\Path", "a\"b", ""), text);
}

class JsonUserSettingsTest : public testing::Test {
 protected:
  std::string GetError() const {
    return ErrorText([&] { settings_.Get("Form", "Splitter", ""); });
  }
  std::string SetError() {
    return ErrorText([&] { settings_.Set("Form", "Splitter", "new"); });
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.File("settings.json");
  JsonUserSettings settings_{path_};
};

TEST_F(JsonUserSettingsTest, SettingsOutliveTheObject) {
  settings_.Set("Form", "Splitter", "7");
  EXPECT_EQ(JsonUserSettings(path_).Get("Form", "Splitter", ""), "7");
}

TEST_F(JsonUserSettingsTest, TwoProgramsKeepEachOthersSettings) {
  JsonUserSettings other(path_);
  settings_.Set("Form", "One", "1");
  other.Set("Form", "Two", "2");
  settings_.Set("Form", "Three", "3");
  EXPECT_EQ(other.Get("Form", "One", "") + other.Get("Form", "Two", "") + other.Get("Form", "Three", ""), "123");
}

TEST_F(JsonUserSettingsTest, FolderIsMadeWithTheFile) {
  JsonUserSettings settings(folder_.File("new\\deep\\settings.json"));
  settings.Set("Form", "Splitter", "7");
  EXPECT_EQ(folder_.Read("new/deep/settings.json"), "{\n  \"Form\": {\n    \"Splitter\": \"7\"\n  }\n}\n");
}

TEST_F(JsonUserSettingsTest, WhatElseTheFileHoldsStaysInItsOrder) {
  folder_.Write("settings.json", R"({"z": [1, 2.5, null], "Form": {"b": true, "splitter": "1"}, "a": {"n": 3}})");
  settings_.Set("Form", "Splitter", "2");
  EXPECT_EQ(folder_.Read("settings.json"),
            "{\n  \"z\": [\n    1,\n    2.5,\n    null\n  ],\n  \"Form\": {\n    \"b\": true,\n    \"splitter\": "
            "\"2\"\n  },\n  \"a\": {\n    \"n\": 3\n  }\n}\n");
}

TEST_F(JsonUserSettingsTest, BrokenFileIsNamedWithThePlaceAndKept) {
  const std::string broken = "{\n  \"Form\": {\n    \"Größe\" 5\n  }\n}\n";
  folder_.Write("settings.json", broken);
  const std::string expected = path_ +
                               ":3:13: syntax error while parsing object separator - unexpected number literal; "
                               "expected ':'";
  EXPECT_EQ(GetError(), expected);
  EXPECT_EQ(SetError(), expected);
  EXPECT_EQ(folder_.Read("settings.json"), broken);
  EXPECT_EQ(folder_.EntryCount(), 1U);
}

TEST_F(JsonUserSettingsTest, EmptyFileIsBroken) {
  folder_.Write("settings.json", "");
  EXPECT_EQ(GetError(), path_ +
                            ":1:1: syntax error while parsing value - unexpected end of input; expected '[', '{', or a "
                            "literal");
}

TEST_F(JsonUserSettingsTest, CutFileIsBroken) {
  folder_.Write("settings.json", "{\"Form\": {\"Spl");
  EXPECT_EQ(GetError(), path_ +
                            ":1:15: syntax error while parsing object key - invalid string: missing closing quote; "
                            "last read: '\"Spl'; expected string literal");
}

TEST_F(JsonUserSettingsTest, FileThatIsNoUtf8IsBroken) {
  folder_.Write("settings.json", "{\n\"F\xFC\": 1}");
  EXPECT_EQ(GetError(), path_ + ":2:3: the file is not valid UTF-8");
}

TEST_F(JsonUserSettingsTest, FileWithoutAnObjectIsBroken) {
  folder_.Write("settings.json", "[]");
  EXPECT_EQ(SetError(), path_ + ":1:1: the file has to hold one JSON object");
}

TEST_F(JsonUserSettingsTest, DeepNestingIsRefused) {
  folder_.Write("settings.json", "{\"a\": " + std::string(100000, '[') + std::string(100000, ']') + "}");
  EXPECT_EQ(GetError(), path_ + ": values are nested too deeply");
}

TEST_F(JsonUserSettingsTest, NumberBeyondReachIsRefused) {
  folder_.Write("settings.json", "{\"a\": 1e999}");
  EXPECT_EQ(GetError(), path_ + ": the file holds a number beyond what can be kept");
}

TEST_F(JsonUserSettingsTest, SectionThatIsNoObjectIsRefusedAndKept) {
  folder_.Write("settings.json", R"({"Form": 5})");
  const std::string expected = path_ + ": the value of \"Form\" has to be a JSON object";
  EXPECT_EQ(GetError(), expected);
  EXPECT_EQ(SetError(), expected);
  EXPECT_EQ(folder_.Read("settings.json"), R"({"Form": 5})");
}

TEST_F(JsonUserSettingsTest, SettingThatIsNoTextIsRefused) {
  folder_.Write("settings.json", R"({"Form": {"Splitter": 5}})");
  EXPECT_EQ(GetError(), path_ + ": the value of \"Splitter\" in \"Form\" has to be a JSON string");
}

TEST_F(JsonUserSettingsTest, TextThatIsNoUtf8IsRefusedAndTheFileKept) {
  settings_.Set("Form", "Splitter", "7");
  EXPECT_EQ(ErrorText([&] { settings_.Set("Form", "Splitter", "\xFF"); }),
            "The file \"" + path_ + "\" cannot be written: a setting is not valid UTF-8.");
  EXPECT_EQ(settings_.Get("Form", "Splitter", ""), "7");
}

TEST_F(JsonUserSettingsTest, FolderInPlaceOfTheFileIsNamed) {
  std::filesystem::create_directory(path_);
  EXPECT_EQ(GetError(), "The file \"" + path_ + "\" cannot be read: it is a folder.");
}

TEST_F(JsonUserSettingsTest, FileInPlaceOfTheFolderIsNamed) {
  folder_.Write("file", "x");
  JsonUserSettings settings(folder_.File("file/settings.json"));
  EXPECT_EQ(ErrorText([&] { settings.Set("Form", "Splitter", "7"); }),
            "The folder \"" + (folder_.File("file")) + "\" cannot be made: a file stands in the way.");
}

TEST(MemoryRegistry, ValuesAreFoundInAnyCase) {
  MemoryRegistry registry;
  EXPECT_EQ(registry.Value(registryKey, userExtensionsValue), std::nullopt);
  registry.SetValue("Software\\norvane\\Ferrowood", "userextensions", "a.xml");
  EXPECT_EQ(registry.Value(registryKey, userExtensionsValue), "a.xml");
  EXPECT_EQ(registry.Value("SOFTWARE\\Norvane", userExtensionsValue), std::nullopt);
}

TEST(JsonRegistry, MissingFileHoldsNoValues) {
  const TemporaryFolder folder;
  EXPECT_EQ(JsonRegistry(folder.File("none.json")).Value(registryKey, userExtensionsValue), std::nullopt);
}

TEST(JsonRegistry, ValuesAreFoundInAnyCase) {
  const TemporaryFolder folder;
  folder.Write("registry.json", R"({"software\\Norvane\\FERROWOOD": {"UserExtensions": "D:\\site.xml"}})");
  const JsonRegistry registry(folder.File("registry.json"));
  EXPECT_EQ(registry.Value(registryKey, userExtensionsValue), "D:\\site.xml");
  EXPECT_EQ(registry.Value(registryKey, "Other"), std::nullopt);
  EXPECT_EQ(registry.Value("SOFTWARE", userExtensionsValue), std::nullopt);
}

TEST(JsonRegistry, BrokenFileIsNamedWithThePlace) {
  const TemporaryFolder folder;
  folder.Write("registry.json", "{]");
  EXPECT_EQ(ErrorText([&] { JsonRegistry(folder.File("registry.json")).Value(registryKey, userExtensionsValue); }),
            (folder.File("registry.json")) +
                ":1:2: syntax error while parsing object key - unexpected ']'; expected string literal");
}

}  // namespace
}  // namespace qmrules::platform
