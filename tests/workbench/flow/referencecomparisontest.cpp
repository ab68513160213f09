#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/memorysources.h"
#include "workbench/codemodel/cobol/cobolfrontend.h"
#include "workbench/flow/referencecheck.h"

namespace qmrules::test {
namespace {

using workbench::codemodel::ModelImage;
using workbench::codemodel::SerializeModel;
using workbench::codemodel::cobol::CobolFrontEnd;

TEST(ReferenceComparison, AllChainsOfTheSamplesEqualThoseOfThePlainSolver) {
  MemorySources sources;
  std::vector<std::string> programs;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(QMRULES_SAMPLES)) {
    if (!entry.is_regular_file()) continue;
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string name = entry.path().filename().string();
    sources.Put(name, std::string(std::istreambuf_iterator<char>(file), {}));
    if (entry.path().parent_path().filename() == "cobol") programs.push_back(name);
  }
  ASSERT_FALSE(programs.empty());
  CobolFrontEnd frontEnd(sources, {});
  for (const std::string& name : programs) {
    std::size_t links = 0;
    for (const auto& program : frontEnd.Translate(name, [] { return false; })) {
      const auto image = ModelImage::FromBytes(SerializeModel(program.model), name);
      for (std::uint32_t unit = 0; unit < image->Units().size(); ++unit) {
        const ReferenceComparison compared = CompareWithReference(*image, unit);
        EXPECT_EQ(compared.difference, "") << name;
        links += compared.links;
      }
    }
    EXPECT_GT(links, 20U) << name;
  }
}

}  // namespace
}  // namespace qmrules::test
