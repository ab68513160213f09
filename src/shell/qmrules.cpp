#include "shell/qmrules.h"

#include <fmt/format.h>

#include <stdexcept>
#include <utility>

#include "attributes/attributedefaults.h"
#include "catalogue/attributeschema.h"
#include "catalogue/gateway.h"
#include "catalogue/ignorederrors.h"
#include "platform/error.h"
#include "shell/commandtable.h"

namespace qmrules::shell {

using platform::Error;
using platform::FerrowoodName;

struct QMRules::State {
  explicit State(platform::Workspace& workspace)
      : QMWS(workspace), FE(workspace.FE()), Progress(workspace.Progress()), Repository(FE.Repository()) {}

  platform::Workspace& QMWS;
  platform::FrontEnd& FE;
  platform::Progress& Progress;
  platform::Repository& Repository;

  std::string helpFile;
  platform::Font font;
  platform::widgets::ImageList nodeImages;
  platform::KeyedCollection<std::string> selectedKeys;
  std::string schemaPath;
  platform::XmlDocument schemaDocument;
  platform::XmlElement schemaElement;
  catalogue::AttributeLists attributes;
  platform::KeyedCollection<int> attributeIndex;
  platform::KeyedCollection<std::string> longTextAttributes;
  std::string attributeFetchList;
};

namespace {

constexpr std::string_view kLayoutHeader = "wObjs,Descr,Attrs,Aux";
constexpr std::string_view kSettingsSection = "Settings";
constexpr std::string_view kSplitterSetting = "Splitter";
constexpr const char* kConfigPath =
    "/OPTIONS/CASE[@NAME='Ferrowood']/LIST[@NAME='FW']/CASE[@NAME='CRD']/LIST[@NAME='CRDOptions']"
    "/CASE[@NAME='CRDConfig']";
constexpr int kThird = 333;

void RegisterCommands(platform::Workspace& workspace, const platform::TesselGlobals& globals,
                      const StringTable& texts) {
  workspace.AddMethod(globals.internalName, "", globals.externalName);
  for (const CommandEntry& entry : CommandTable()) {
    workspace.AddMethod(globals.internalName, entry.key, MenuPath(entry, globals.externalName, texts));
  }
}

void LoadNodeImages(const platform::FrontEnd& frontEnd, const platform::Schema& schema,
                    const platform::FileSystem& fileSystem, platform::widgets::ImageList& images) {
  for (const std::string_view entity : {catalogue::kBusinessFunction, catalogue::kRuleSet, catalogue::kRule}) {
    catalogue::WithErrorsIgnored([&] {
      const std::string path =
          frontEnd.GetFerrowoodName(FerrowoodName::ProductFolder) + "\\Icons\\" + schema.Entity(entity).Icon();
      images.Set(entity, {path, fileSystem.ReadFile(path)});
    });
  }
}

std::string SchemaDocumentPath(const platform::Registry& registry, const platform::FrontEnd& frontEnd) {
  auto path = registry.Value(platform::registryKey, platform::userExtensionsValue);
  return path ? *path : frontEnd.GetFerrowoodName(FerrowoodName::ProductFolder) + "\\User.Repstry.xml";
}

platform::XmlElement RequireRuleAttributes(const platform::XmlDocument& document, const std::string& path) {
  auto element = document.selectSingleNode(catalogue::kRuleAttributesPath);
  if (!element) {
    throw Error(
        fmt::format("{} has no element {}. Restore the schema document.", path, catalogue::kRuleAttributesPath));
  }
  return element;
}

std::string RequireText(const platform::XmlElement& config, std::string_view name) {
  const auto node = config.selectSingleNode(fmt::format("./TEXT[@NAME=\"{}\"]", name));
  if (!node) {
    throw Error(fmt::format("The project options have no text {}. Restore the project's options file.", name));
  }
  return node.AttributeOr("VALUE", "");
}

void ReadUnassignedTexts(platform::Options& options, platform::TesselGlobals& globals) {
  const auto config = options.Document().selectSingleNode(kConfigPath);
  if (!config) {
    throw Error(fmt::format("The project options have no node {}. Restore the project's options file.", kConfigPath));
  }
  globals.UnassignedBFName = RequireText(config, "UnassignedBFName");
  globals.UnassignedBFDescr = RequireText(config, "UnassignedBFDescr");
  globals.UnassignedRSName = RequireText(config, "UnassignedRSName");
  globals.UnassignedRSDescr = RequireText(config, "UnassignedRSDescr");
}

bool StandsOutsideThePanel(std::string_view attribute) {
  return attribute == "RuleName" || attribute == "Description" || attribute == "BusinessDescription";
}

}  // namespace

QMRules::QMRules(ControlServices services) : services_(std::move(services)), splitter_("splPanes") {
  splitter_.SetRequiredPanes({"Objects", "Descriptions", "FirstArea", "SecondArea"});
}

QMRules::~QMRules() = default;

void QMRules::Init(platform::Workspace& aQMWS, std::string_view aIntName, std::string_view aExtName) {
  if (state_) throw std::logic_error("QMRules has a workspace already; DeInit gives it back.");
  auto& globals = services_.globals;
  globals.internalName = aIntName;
  globals.externalName = aExtName;

  auto state = std::make_unique<State>(aQMWS);
  state->helpFile = state->FE.HelpFile();
  state->font = aQMWS.Font();
  const auto& schema = state->Repository.Schema();
  LoadNodeImages(state->FE, schema, services_.fileSystem, state->nodeImages);
  RegisterCommands(aQMWS, globals, services_.texts);

  state->schemaPath = SchemaDocumentPath(services_.registry, state->FE);
  state->schemaDocument.loadXML(services_.fileSystem.ReadFile(state->schemaPath), state->schemaPath);
  state->schemaElement = RequireRuleAttributes(state->schemaDocument, state->schemaPath);
  if (services_.repairIsDue()) {
    attributes::ApplyAttributeDefaults(state->Repository.Database(), state->schemaDocument);
    services_.repairIsDone();
  }

  state->attributes = catalogue::BuildAttributeLists(state->schemaElement);
  state->attributeFetchList = "Description,BusinessDescription,Model,FileName,FromRow,ToRow";
  int place = 0;
  for (const auto* attribute : schema.Entity(catalogue::kRule).Attrs()) {
    const std::string& name = attribute->Name();
    if (!state->attributes.shown.Contains(name) || StandsOutsideThePanel(name)) continue;
    state->attributeIndex.Add(++place, name);
    if (attribute->Type() == platform::AttrType::LongText) state->longTextAttributes.Add(name, name);
    state->attributeFetchList += "," + name;
  }

  ReadUnassignedTexts(state->FE.ProjectOptions(), globals);
  LayOutPanes();
  state_ = std::move(state);
}

void QMRules::LayOutPanes() {
  const std::string saved = services_.settings.Get(kSettingsSection, kSplitterSetting, "");
  if (!saved.starts_with(kLayoutHeader) || !splitter_.SetLayoutText(saved.substr(kLayoutHeader.size()))) {
    using enum platform::widgets::SplitDirection;
    splitter_.Reset("Control");
    splitter_.Split("Control", {"Objects", "Properties", SideBySide, kThird});
    splitter_.Split("Properties", {"Descriptions", "Others", Stacked, kThird});
    splitter_.Split("Others", {"FirstArea", "SecondArea", Stacked, kThird});
  }
  splitter_.SetOn(true);
}

void QMRules::DeInit() {
  if (!state_) return;
  state_.reset();
  try {
    services_.settings.Set(kSettingsSection, kSplitterSetting, std::string(kLayoutHeader) + splitter_.LayoutText());
  } catch (const Error&) {
    services_.tracing.UnloadProgram("");
    throw;
  }
  services_.tracing.UnloadProgram("");
}

void QMRules::ErrorRecord(std::string_view /*Msg*/) {}

const QMRules::State& QMRules::Held() const {
  if (!state_) throw std::logic_error("QMRules has no workspace; Init gives it one.");
  return *state_;
}

const platform::XmlDocument& QMRules::SchemaDocument() const {
  return Held().schemaDocument;
}

const std::string& QMRules::SchemaPath() const {
  return Held().schemaPath;
}

const platform::XmlElement& QMRules::SchemaElement() const {
  return Held().schemaElement;
}

const platform::KeyedCollection<std::string>& QMRules::ShownAttributes() const {
  return Held().attributes.shown;
}

const platform::KeyedCollection<std::string>& QMRules::EditableAttributes() const {
  return Held().attributes.editable;
}

const platform::KeyedCollection<int>& QMRules::AttributeIndex() const {
  return Held().attributeIndex;
}

const platform::KeyedCollection<std::string>& QMRules::LongTextAttributes() const {
  return Held().longTextAttributes;
}

const std::string& QMRules::AttributeFetchList() const {
  return Held().attributeFetchList;
}

platform::KeyedCollection<std::string>& QMRules::SelectedKeys() {
  Held();
  return state_->selectedKeys;
}

const platform::widgets::ImageList& QMRules::NodeImages() const {
  return Held().nodeImages;
}

const std::string& QMRules::HelpFile() const {
  return Held().helpFile;
}

const platform::Font& QMRules::Font() const {
  return Held().font;
}

}  // namespace qmrules::shell
