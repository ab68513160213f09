// SEARCH and SEARCH ALL.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/cobolmodel.h"

namespace qmrules::test {
namespace {

using testing::IsEmpty;

constexpr std::string_view kSearchData = R"(01  T.
    05  E OCCURS 5 TIMES ASCENDING KEY K INDEXED BY I.
        10  K PIC 9.
        10  V PIC 9.
01  A PIC 9.
01  X USAGE INDEX.
)";

TEST(Search, HasItsOutcomesInAnIfBehindIt) {
  const auto model = CobolModel::Of(kSearchData, R"(MAIN-PARA.
    SEARCH $table[[E]] VARYING $x[[X]]
        AT END
            GOBACK
        WHEN K (I) = A
        WHEN V (I) = 1 AND A = 2
            CONTINUE
        WHEN V (I) = 3
            NEXT SENTENCE
    END-SEARCH
    STOP RUN.
)");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  EXPECT_EQ(model.At("table"), "VAR E OUT Search 6");
  EXPECT_EQ(model.At("x"), "VAR X INOUT Varying 10");
  EXPECT_EQ(model.Outline(), R"(PORT ENTRY
PAR MAIN-PARA
  STAT SEARCH
  IF Search
    COND AT END
    BLOCK Then
      PORT GOBACK
    COND K(I) = A OR V(I) = 1 AND A = 2
    BLOCK Then
      STAT CONTINUE
    COND V(I) = 3
    BLOCK Then
      STAT NEXT SENTENCE
  PORT STOP RUN
)");
}

TEST(Search, CountsUpTheTablesOwnIndex) {
  const auto model = CobolModel::Of(kSearchData, R"(MAIN-PARA.
    SEARCH ALL E
        WHEN K (I) = 1 AND K (I) = A
            CONTINUE.
    STOP RUN.
)");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  EXPECT_EQ(model.Tree(), R"(PORT ENTRY
PAR MAIN-PARA
  STAT SEARCH
    VAR E OUT Search
    VAR I INOUT Varying implicit
  IF Search
    COND K(I) = 1 AND K(I) = A
      VAR K OUT Source
        VAR I OUT Subscript
      CONST 1 Source
      VAR K OUT Source
        VAR I OUT Subscript
      VAR A OUT Source
    BLOCK Then
      STAT CONTINUE
  PORT STOP RUN
)");
}

TEST(Search, NestsInItsOwnBranches) {
  const auto model = CobolModel::Of(kSearchData, R"(MAIN-PARA.
    SEARCH E AT END CONTINUE
        WHEN K (I) = A
            SEARCH E END GOBACK
                WHEN V (I) = A CONTINUE END-SEARCH
        WHEN V (I) = A
            STOP RUN
    END-SEARCH.
)");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  EXPECT_EQ(model.Outline(), R"(PORT ENTRY
PAR MAIN-PARA
  STAT SEARCH
  IF Search
    COND AT END
    BLOCK Then
      STAT CONTINUE
    COND K(I) = A
    BLOCK Then
      STAT SEARCH
      IF Search
        COND AT END
        BLOCK Then
          PORT GOBACK
        COND V(I) = A
        BLOCK Then
          STAT CONTINUE
    COND V(I) = A
    BLOCK Then
      PORT STOP RUN
PORT GOBACK implicit
)");
}

}  // namespace
}  // namespace qmrules::test
