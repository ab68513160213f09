#pragma once

#include <memory>
#include <string>

namespace qmrules::platform {

class Repository;
class Workspace;
class XmlDocument;

// Loads an exchange document into the repository, once. It reads the objects below "/ERD/Repository/Objects", with the
// key or ID of the project in the attribute ProjectID there; with events="false" no object event is raised.
class ERDLoader {
 public:
  virtual ~ERDLoader() = default;
  // The first option: an object whose entity and name are in the repository is given the document's attributes and
  // relations; without it such an object is left as it is.
  virtual void SetUpdateExisting(bool update) = 0;
  // Loads all or nothing. Throws nothing for a document that it refuses: Status and ErrorText tell.
  virtual void Load(XmlDocument& document, Workspace& workspace) = 0;
  // Negative when the last Load was refused.
  virtual int Status() const = 0;
  // A text for the reader; "" while Status is not negative.
  virtual std::string ErrorText() const = 0;
};

class ERDLoaderFactory {
 public:
  virtual ~ERDLoaderFactory() = default;
  virtual std::unique_ptr<ERDLoader> NewERDLoader(Repository& repository) = 0;
};

}  // namespace qmrules::platform
