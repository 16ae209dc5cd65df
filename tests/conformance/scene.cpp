#include "tests/conformance/scene.hpp"

#include <fstream>
#include <stdexcept>

#include <stdlib.h>

namespace tandemtrim::conformance {
namespace {

using std::filesystem::path;

void write(const path& file, const std::string& text) {
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << text;
}

std::string propertyList(const std::string& dictionary) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n" + dictionary +
         "</dict>\n</plist>\n";
}

std::string entry(const std::string& key, const std::string& value) {
  return "<key>" + key + "</key>" + value + "\n";
}

std::string settingInfoText(const std::map<std::string, std::string>& settingInfo) {
  std::map<std::string, std::string> mainKeys;
  for (const auto& [keyPath, value] : settingInfo) {
    const auto dot = keyPath.find('.');
    mainKeys[keyPath.substr(0, dot)] += entry(keyPath.substr(dot + 1), value);
  }
  std::string text;
  for (const auto& [mainKey, entries] : mainKeys) text += entry(mainKey, "<dict>\n" + entries + "</dict>");
  return propertyList(text);
}

std::string integer(int value) { return "<integer>" + std::to_string(value) + "</integer>"; }
std::string string(const std::string& value) { return "<string>" + value + "</string>"; }

}  // namespace

Scene::Scene() {
  std::string folder = std::filesystem::temp_directory_path() / "tandem-trim-scene-XXXXXX";
  if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("no temporary folder: " + folder);
  folder_ = folder;

  settingInfo = {
      {"DefaultValue.Valid", string("Off")},
      {"DefaultValue.ImageDirection", string("LongEdgeFeed")},
      {"DefaultValue.Position", string("Center")},
      {"DefaultValue.MarginMin", integer(0)},
      {"DefaultValue.MarginMax", integer(60)},
      {"DefaultValue.MarginLimit", integer(30)},
      {"TicketKey.Valid", string("MVTandemTrim")},
      {"TicketKey.ImageDirection", string("MVImageDirectionPriority")},
      {"TicketKey.Position", string("MVPrintPosition")},
      {"ID.PanelKind", string(kPanelKind)},
      {"Wording.MinLabelForValueRange", string("[min]")},
      {"Wording.MaxLabelForValueRange", string("[max]")},
  };
  strings = {
      {"TandemTrim", "Panel Name"},
      {"EnableTandemTrim", "Trim It"},
      {"ImageDirection", "Which Way"},
      {"InformPrintingPosition", "Where"},
      {"RestoreDefault", "As It Was"},
      {"IntegerValueRangeFormat", "from [min] up to [max]"},
      {"Left", "Port"},
      {"Center", "Midships"},
      {"Right", "Starboard"},
      {"LongEdgeFeed", "Long Edge First"},
      {"ShortEdgeFeed", "Short Edge First"},
      {"On", "Yes"},
      {"Off", "No"},
  };
  ppdAttributes.emplace();
  for (const auto& side : kSceneSides) {
    settingInfo["DefaultValue.Margin" + side.name] = integer(side.defaultValue);
    settingInfo["TicketKey.Margin" + side.name] = string("MV" + side.name + "Margin");
    strings[side.name + "Margin"] = side.title;
    (*ppdAttributes)["MVMaxTandemTrimMargin" + side.name] = std::to_string(side.limit);
  }
}

Scene::~Scene() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::string Scene::writeBundle() const {
  const auto bundle = folder_ / "TandemTrim.bundle";
  const auto contents = bundle / "Contents";
  write(contents / "Info.plist", propertyList(entry("CFBundleIdentifier", string("conformance")) +
                                              entry("CFBundleExecutable", string("TandemTrim")) +
                                              entry("NSPrincipalClass", string("MorvaTTPdePluginKV2")) +
                                              entry("CFBundleDevelopmentRegion", string("en"))));
  if (!settingInfo.empty()) {
    write(contents / "Resources" / "TandemTrimKV2-SettingInfo.plist", settingInfoText(settingInfo));
  }
  std::string table = "\xEF\xBB\xBF";
  for (const auto& [key, text] : strings) table += '"' + key + "\" = \"" + text + "\";\n";
  write(contents / "Resources" / "en.lproj" / "Localizable.strings", table);
  return bundle;
}

std::optional<std::string> Scene::writePpd() const {
  if (!ppdAttributes) return std::nullopt;
  std::string text =
      "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n*LanguageVersion: English\n"
      "*LanguageEncoding: ISOLatin1\n*PCFileName: \"SCENE.PPD\"\n*Manufacturer: \"Morva\"\n*Product: "
      "\"(Scene)\"\n"
      "*ModelName: \"Scene\"\n*ShortNickName: \"Scene\"\n*NickName: \"Scene\"\n*PSVersion: \"(3010.000) 0\"\n"
      "*LanguageLevel: \"3\"\n*ColorDevice: False\n*DefaultColorSpace: Gray\n*FileSystem: False\n";
  for (const auto& [keyword, value] : *ppdAttributes) text += "*" + keyword + ": \"" + value + "\"\n";
  const auto file = folder_ / "scene.ppd";
  write(file, text);
  return file;
}

}  // namespace tandemtrim::conformance
