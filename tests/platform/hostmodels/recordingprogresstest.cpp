#include "platform/recordingprogress.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace qmrules::platform {
namespace {

using Call = RecordingProgress::Call;

TEST(RecordingProgress, KeepsWhatWasReported) {
  RecordingProgress progress;
  progress.StartProgress("Validating rules...", 3, true);
  EXPECT_TRUE(progress.IsOpen());
  progress.StartStep("PBRATE");
  progress.FinishStep(2);
  progress.FinishStep(1);
  EXPECT_EQ(progress.Done(), 3);
  progress.FinishProgress();
  EXPECT_FALSE(progress.IsOpen());
  EXPECT_EQ(progress.Entries(), (std::vector<RecordingProgress::Entry>{
                                    {Call::StartProgress, "Validating rules...", 3, true},
                                    {Call::StartStep, "PBRATE", 0, false},
                                    {Call::FinishStep, "", 2, false},
                                    {Call::FinishStep, "", 1, false},
                                    {Call::FinishProgress, "", 0, false},
                                }));
}

TEST(RecordingProgress, IsCancelledAfterSoManySteps) {
  RecordingProgress progress;
  progress.CancelAfterSteps(2);
  progress.StartProgress("Report", 5, true);
  EXPECT_FALSE(progress.Cancelled());
  progress.FinishStep(1);
  EXPECT_FALSE(progress.Cancelled());
  progress.FinishStep(1);
  EXPECT_TRUE(progress.Cancelled());
  progress.FinishStep(1);
  EXPECT_TRUE(progress.Cancelled());
}

TEST(RecordingProgress, IsCancelledAfterSoManyQuestions) {
  RecordingProgress progress;
  progress.CancelAfterQuestions(1);
  progress.StartProgress("Report", 5, true);
  EXPECT_FALSE(progress.Cancelled());
  EXPECT_TRUE(progress.Cancelled());
  EXPECT_TRUE(progress.Cancelled());
}

TEST(RecordingProgress, IsNotCancelledByItself) {
  RecordingProgress progress;
  progress.StartProgress("Report", 5, true);
  for (int step = 0; step < 100; ++step) {
    EXPECT_FALSE(progress.Cancelled());
    progress.FinishStep(1);
  }
}

TEST(RecordingProgress, WorkThatCannotBeCancelledIsNot) {
  RecordingProgress progress;
  progress.CancelAfterQuestions(0);
  EXPECT_FALSE(progress.Cancelled());
  progress.StartProgress("Validating rules...", 5, false);
  EXPECT_FALSE(progress.Cancelled());
  progress.FinishProgress();
  progress.StartProgress("Report", 5, true);
  EXPECT_TRUE(progress.Cancelled());
}

TEST(RecordingProgress, EachWorkCountsItsOwnSteps) {
  RecordingProgress progress;
  progress.StartProgress("First", 5, false);
  progress.FinishStep(5);
  progress.FinishProgress();
  progress.StartProgress("Second", 2, false);
  EXPECT_EQ(progress.Done(), 0);
}

TEST(ProgressDisplay, IsClosedOnEveryPath) {
  RecordingProgress progress;
  try {
    const ProgressDisplay display(progress, "Report", 3, true);
    EXPECT_TRUE(progress.IsOpen());
    throw std::runtime_error("no");
  } catch (const std::runtime_error&) {
    EXPECT_FALSE(progress.IsOpen());
  }
  EXPECT_EQ(progress.Entries().size(), 2U);
}

TEST(PaintPauses, AskTheHostOnceInManyTurnsAndShowNothing) {
  RecordingProgress progress;
  PaintPauses pauses(progress);
  for (int turn = 0; turn < 6400; ++turn) pauses.Turn();
  EXPECT_EQ(progress.Asked(), 100);
  EXPECT_TRUE(progress.Entries().empty());
}

}  // namespace
}  // namespace qmrules::platform
