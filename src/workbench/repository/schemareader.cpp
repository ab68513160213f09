// Reads the schema documents: the product's own, compiled in, and the site's extension.

#include <fmt/format.h>

#include <string_view>

#include "platform/error.h"
#include "platform/value.h"
#include "shell/casefold.h"
#include "workbench/repository/storeschema.h"

namespace qmrules::embedded {
extern const std::string_view repstry;
}

namespace qmrules::workbench::repository {

using platform::AttrType;
using platform::Error;
using platform::XmlDocument;
using platform::XmlElement;

namespace {

using Attributes = std::vector<std::unique_ptr<StoreAttribute>>;

AttrType ParseType(std::string_view type, const std::string& place) {
  for (const auto known :
       {AttrType::LongText, AttrType::Boolean, AttrType::Integer, AttrType::Char, AttrType::Timestamp}) {
    if (type == platform::AttrTypeName(known)) return known;
  }
  throw Error(fmt::format(
      "{} has the unknown type \"{}\"; the types are LONGTEXT, BOOLEAN, INTEGER, CHAR and TIMESTAMP.", place, type));
}

bool IsAdmissibleName(std::string_view name) {
  constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
  return !name.empty() && name.size() <= 64 && name.find_first_not_of(letters) == std::string_view::npos;
}

bool IsTaken(const Attributes& attributes, std::string_view name) {
  if (shell::EqualIgnoringCase(name, "ID") || shell::EqualIgnoringCase(name, "ObjectID")) return true;
  for (const auto& attribute : attributes) {
    if (shell::EqualIgnoringCase(attribute->Name(), name)) return true;
  }
  return false;
}

// Where an attribute comes from.
struct Origin {
  std::string file;
  std::string entity;
  bool isSiteOwn = false;
};

void AddAttribute(Attributes& attributes, const XmlElement& element, const Origin& origin) {
  const std::string name = element.AttributeOr("name", "");
  const std::string place = fmt::format("{}: the attribute \"{}\" of {}", origin.file, name, origin.entity);
  if (!IsAdmissibleName(name)) {
    throw Error(fmt::format("{} is not admissible; a name has letters, digits and \"_\", 64 at most.", place));
  }
  if (IsTaken(attributes, name)) throw Error(fmt::format("{} stands there already; give it another name.", place));
  const AttrType type = ParseType(element.AttributeOr("type", ""), place);
  attributes.push_back(
      std::make_unique<StoreAttribute>(name, type, element.AttributeOr("description", name), origin.isSiteOwn));
}

}  // namespace

class SchemaReader {
 public:
  SchemaReader(const std::optional<XmlDocument>& extension, std::string extensionName)
      : extension_(extension), extensionName_(std::move(extensionName)) {}

  std::unique_ptr<StoreSchema> Read() {
    document_.loadXML(embedded::repstry, file_);
    std::unique_ptr<StoreSchema> schema(new StoreSchema);
    for (const auto& element : document_.selectNodes("/repstry/entities/entity")) {
      schema->entities_.push_back(ReadEntity(element));
      schema->views_.push_back(schema->entities_.back().get());
    }
    for (const auto& element : document_.selectNodes("/repstry/relations/relation")) {
      schema->relations_.push_back(ReadRelation(element, *schema));
    }
    return schema;
  }

 private:
  std::unique_ptr<StoreEntity> ReadEntity(const XmlElement& element) {
    EntityTraits traits;
    traits.name = element.AttributeOr("name", "");
    traits.caption = element.AttributeOr("description", traits.name);
    traits.icon = element.AttributeOr("icon", "");
    traits.kindFlags = static_cast<std::int32_t>(platform::Value(element.AttributeOr("kind", "0")).Integer());
    traits.uniqueNames = element.AttributeOr("names", "") == "unique";
    traits.projectRelation = element.AttributeOr("project", "");
    Attributes attributes;
    XmlElement list = element.selectSingleNode("entityattrs");
    if (const auto base = list.getAttribute("base")) {
      list = document_.selectSingleNode("/repstry/attrsets/entityattrs[@name='" + *base + "']");
    }
    for (const auto& attribute : list.selectNodes("entityattr"))
      AddAttribute(attributes, attribute, {file_, traits.name});
    for (const auto& attribute : document_.selectNodes("/repstry/systemattrs/entityattr")) {
      AddAttribute(attributes, attribute, {file_, traits.name});
    }
    AddExtension(attributes, traits.name);
    return std::make_unique<StoreEntity>(std::move(traits), std::move(attributes));
  }

  // Attributes that the extension marks as system belong to the product: they are listed there for the tools that read
  // that document alone, and must not be added twice.
  void AddExtension(Attributes& attributes, const std::string& entity) {
    if (!extension_) return;
    const std::string path = "//entity[@name='" + entity + "']/entityattrs/entityattr[not(@system='true')]";
    for (const auto& attribute : extension_->selectNodes(path)) {
      AddAttribute(attributes, attribute, {extensionName_, entity, true});
    }
  }

  std::unique_ptr<StoreRelation> ReadRelation(const XmlElement& element, const StoreSchema& schema) {
    StoreRelation::Traits traits;
    traits.name = element.AttributeOr("name", "");
    traits.directed = element.AttributeOr("directed", "");
    traits.inverse = element.AttributeOr("inverse", "");
    traits.className = element.AttributeOr("class", "");
    const std::string owner = element.AttributeOr("owner", "");
    if (owner == "from") traits.owner = OwningEnd::From;
    if (owner == "to") traits.owner = OwningEnd::To;
    return std::make_unique<StoreRelation>(std::move(traits), schema.Entity(element.AttributeOr("from", "")),
                                           schema.Entity(element.AttributeOr("to", "")));
  }

  const std::string file_ = "repstry.xml";
  XmlDocument document_;
  const std::optional<XmlDocument>& extension_;
  std::string extensionName_;
};

std::unique_ptr<StoreSchema> StoreSchema::Load(const std::optional<XmlDocument>& extension,
                                               const std::string& extensionName) {
  return SchemaReader(extension, extensionName).Read();
}

}  // namespace qmrules::workbench::repository
