#include "shell/glossaryaccess.h"

namespace qmrules::shell {

namespace {

constexpr const char* kComponentPath =
    "/OPTIONS/CASE[@NAME='Methods']/LIST[@NAME='Methods']/CASE[@NAME='Quillglass']/LIST[@NAME='Components']"
    "/CASE[@NAME='QMGlossary']";

}  // namespace

bool HasGlossary(platform::FrontEnd& frontEnd) {
  return static_cast<bool>(frontEnd.GlobalOptions().Document().selectSingleNode(kComponentPath));
}

std::unique_ptr<platform::Database> OpenGlossary(const platform::FrontEnd& frontEnd,
                                                 platform::DatabaseEngine& databases) {
  return databases.OpenDatabase(frontEnd.GetFerrowoodName(platform::FerrowoodName::SourceFolder) + "\\Glossary.mdb");
}

}  // namespace qmrules::shell
