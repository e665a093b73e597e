#include "play/slurm.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

GameOrder Order() {
  GameOrder order;
  order.number = 7;
  order.batch_file = "/t/it's\\g7.BAT";
  order.pgn_file = "/t/it's/100%/g7.PGN";
  order.claim_file = "/t/it's/g7.run";
  order.job = "tarvendo-t-1f3a9c-g7-1";
  return order;
}

TEST(Slurm, AJobsNameTellsTourneyAndGameAndIsMadeOfPlainSigns) {
  const std::string name = SlurmJobName("/home/ann/our club", 7, "t3.1");
  EXPECT_EQ(name.find("tarvendo-our_club-"), 0U) << name;
  EXPECT_NE(name.find("-g7-t3.1"), std::string::npos) << name;
  EXPECT_NE(name, SlurmJobName("/home/bob/our club", 7, "t3.1")) << "another directory";
  EXPECT_EQ(name, SlurmJobName("/home/ann/our club", 7, "t3.1"));
  EXPECT_LT(SlurmJobName("/" + std::string(5000, 'x'), 7, "1").size(), 80U);
}

TEST(Slurm, WordsForSbatchAreSeparatedByBlanksAndHeldTogetherByQuotes) {
  EXPECT_EQ(SplitSlurmWords("--exclusive  --comment='a b' \"c'd\" x''"),
            (std::vector<std::string>{"--exclusive", "--comment=a b", "c'd", "x"}));
  EXPECT_TRUE(SplitSlurmWords(" ").empty());
}

TEST(Slurm, NothingInANameOrAnOptionIsRunByTheShellOrReadAsAPattern) {
  const std::string line = SlurmSubmitLine(Order(), {"/opt/tarvendo", {"--x=$(rm)", "a'b"}, 0});
  EXPECT_NE(line.find(" '--x=$(rm)' 'a'\"'\"'b'"), std::string::npos) << line;
  EXPECT_NE(line.find("'--output=/t/it'\"'\"'s/100%%/g7.out'"), std::string::npos) << line;
  EXPECT_NE(line.find("'--chdir=/t/it'\"'\"'s'"), std::string::npos) << line;
  EXPECT_EQ(line.find("--patience"), std::string::npos);
  EXPECT_NE(SlurmSubmitLine(Order(), {"/opt/tarvendo", {}, 30}).find("--patience 30"),
            std::string::npos);
}

TEST(Slurm, AnAnswerIsWholeOnlyWithItsLastLine) {
  const auto answer = ReadSlurmAnswer("one\ntwo\n\n\ntarvendo-end 127\n");
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->text, "one\ntwo");
  EXPECT_EQ(answer->exit_code, 127);
  EXPECT_TRUE(answer->IsMissing());
  EXPECT_TRUE(ReadSlurmAnswer("\ntarvendo-end 0\n"));
  for (const char* cut : {"", "one\n", "one\ntarvendo-end", "tarvendo-end 0", "tarvendo-end \n",
                          "tarvendo-end x\n", "tarvendo-end 0\nmore\n"})
    EXPECT_FALSE(ReadSlurmAnswer(cut)) << cut;
}

TEST(Slurm, TheNumberOfAJobIsFoundBesideWhatPluginsSay) {
  EXPECT_EQ(SlurmJobNumber("1234"), "1234");
  EXPECT_EQ(SlurmJobNumber("sbatch: lua: hello 5\n1234;north\n"), "1234");
  EXPECT_EQ(SlurmJobNumber("Submitted batch job 12"), "");
  EXPECT_EQ(SlurmJobNumber(""), "");
}

TEST(Slurm, TheQueueTellsOurJobsByNameAndPassesByOthers) {
  std::string bad_line;
  const auto queue = ReadSlurmQueue(
      "3 RUNNING tarvendo-t-1f3a9c-g1-1 None\n"
      "4 PENDING tarvendo-t-1f3a9c-g2-1 Nodes required are DOWN, or reserved\n"
      "5_[1-9%2] PENDING my own job None\n"
      "6 OUT_OF_MEMORY tarvendo-t-1f3a9c-g3-1 OutOfMemory\n",
      bad_line);
  ASSERT_TRUE(queue) << bad_line;
  EXPECT_EQ(queue->size(), 3U);
  const SlurmJob& waits = queue->at("tarvendo-t-1f3a9c-g2-1");
  EXPECT_EQ(waits.State(), SlurmState::kWaits);
  EXPECT_EQ(waits.reason, "Nodes required are DOWN, or reserved");
  EXPECT_EQ(queue->at("tarvendo-t-1f3a9c-g1-1").State(), SlurmState::kRuns);
  EXPECT_EQ(queue->at("tarvendo-t-1f3a9c-g1-1").reason, "");
  EXPECT_EQ(queue->at("tarvendo-t-1f3a9c-g3-1").State(), SlurmState::kEnded);
  EXPECT_TRUE(ReadSlurmQueue("", bad_line)) << "nobody has a job";
}

TEST(Slurm, OneLineOfGarbageMakesAQueueOfNoUse) {
  for (const char* garbage :
       {"slurm_load_jobs error: no", "x RUNNING tarvendo-t None", "3 running tarvendo-t None", "3",
        "3 ", "\x01\x02", "CLUSTER: north", "3  tarvendo-t None"}) {
    std::string bad_line;
    EXPECT_FALSE(
        ReadSlurmQueue(std::string("3 RUNNING tarvendo-a None\n") + garbage + "\n", bad_line))
        << garbage;
    EXPECT_EQ(bad_line, garbage);
  }
}

TEST(Slurm, OfTwoJobsOfOneNameTheOneThatHasNotEndedCounts) {
  std::string bad_line;
  const auto told = [&](const std::string& first, const std::string& second) {
    return ReadSlurmQueue("1 " + first + " tarvendo-a None\n2 " + second + " tarvendo-a None\n",
                          bad_line)
        ->at("tarvendo-a")
        .word;
  };
  EXPECT_EQ(told("FAILED", "RUNNING"), "RUNNING");
  EXPECT_EQ(told("PENDING", "COMPLETED"), "PENDING");
  EXPECT_EQ(told("CANCELLED", "COMPLETED"), "COMPLETED");
  EXPECT_EQ(told("COMPLETED", "FAILED"), "COMPLETED");
}

TEST(Slurm, AWordThatIsNotKnownIsNoEnd) {
  SlurmJob job;
  for (const char* word :
       {"CONFIGURING", "REQUEUED", "SUSPENDED", "RESV_DEL_HOLD", "NEWER_STATE"}) {
    job.word = word;
    EXPECT_EQ(job.State(), SlurmState::kWaits) << word;
  }
}

}  // namespace
}  // namespace tarvendo
