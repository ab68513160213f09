// Models that no front end makes: whatever their nodes say, the flow of them comes to an end.

#include <gtest/gtest.h>

#include <random>

#include "workbench/flow/cobol/flowbuilder.h"
#include "workbench/flow/flowprogram.h"
#include "workbench/flow/rangebodies.h"

namespace qmrules::test {
namespace {

using workbench::codemodel::Entity;
using workbench::codemodel::ModelData;
using workbench::codemodel::ModelImage;
using workbench::codemodel::NodeRecord;
using workbench::codemodel::Role;

constexpr std::string_view kDamagedProcedures = R"(MAIN-PARA.
    PERFORM SUB-PARA THRU LAST-PARA VARYING A FROM 1 BY 1
        UNTIL A > 3 AFTER B FROM 1 BY 1 UNTIL B > 4.
    PERFORM UNTIL A = 1
        IF B = 1 EXIT PERFORM CYCLE ELSE EXIT PERFORM END-IF
    END-PERFORM
    EVALUATE A WHEN 1 MOVE 1 TO B WHEN OTHER NEXT SENTENCE
        END-EVALUATE
    SEARCH E AT END MOVE 1 TO A
        WHEN E (I) = 1 MOVE 2 TO A END-SEARCH
    ADD 1 TO A SIZE ERROR MOVE 1 TO B NOT SIZE ERROR MOVE 2 TO B.
    EXEC CICS HANDLE CONDITION ERROR(LAST-PARA) END-EXEC
    EXEC CICS READ FILE('F') INTO(A) RIDFLD(B) END-EXEC
    EXEC SQL WHENEVER SQLERROR GO TO SUB-PARA END-EXEC
    EXEC SQL COMMIT END-EXEC
    ALTER SUB-PARA TO MAIN-PARA.
SUB-PARA.
    GO TO LAST-PARA.
LAST-PARA.
    GO TO MAIN-PARA SUB-PARA DEPENDING ON A.
    STOP RUN.
)";

class ModelDamage {
 public:
  explicit ModelDamage(std::uint32_t seed) : random_(seed) {}

  ModelData Of(ModelData data) {
    for (int count = 0; count < 12; ++count) Change(data);
    return data;
  }

 private:
  std::uint32_t Below(std::size_t end) { return static_cast<std::uint32_t>(random_() % end); }

  void Change(ModelData& data) {
    NodeRecord& node = data.nodes[1 + Below(data.nodes.size() - 1)];
    const bool isStatement = IsKindOf(node.entity, Entity::Stat);
    switch (Below(5)) {
      case 0:
        node.declaration = Below(data.nodes.size());
        break;
      case 1:
        node.role = static_cast<Role>(Below(workbench::codemodel::kRoles));
        break;
      case 2:
        node.verb = static_cast<std::uint8_t>(Below(256));
        break;
      case 3:
        node.flags = static_cast<std::uint16_t>(random_());
        break;
      default:
        if (isStatement) node.entity = Below(2) == 0 ? Entity::If : Entity::Block;
        if (isStatement) node.detail = 0;
        if (!isStatement) node.name = Below(data.texts.size());
    }
  }

  std::mt19937 random_;
};

TEST(DamagedModels, HaveAFlowAllTheSame) {
  const auto model = CobolModel::Of("01  A PIC 9.\n01  B PIC 9.\n01  T.\n    05  E PIC 9 OCCURS 5 INDEXED BY I.\n",
                                    kDamagedProcedures);
  for (std::uint32_t seed = 1; seed <= 500; ++seed) {
    const auto damaged = workbench::codemodel::SerializeModel(ModelDamage(seed).Of(model.Data()));
    const auto image = ModelImage::FromBytes(damaged, "damaged");
    const auto flow = workbench::flow::cobol::BuildFlow(*image, 0);
    const std::size_t points = flow.Points().size();
    EXPECT_LT(points, 4 * image->Nodes().size()) << seed;
    for (workbench::flow::PointId point = 0; point < points; ++point) {
      for (const auto& way : flow.WaysOut(point)) ASSERT_LT(way.to, points) << seed;
    }
    EXPECT_TRUE(workbench::flow::RangeBodies(flow).Runs(workbench::flow::kProgramRange)) << seed;
  }
}

}  // namespace
}  // namespace qmrules::test
