#include "console/resume.h"

#include <gtest/gtest.h>

#include "runner/small_tourney.h"

namespace tarvendo {
namespace {

class Resume : public ::testing::Test, protected SmallTourney {
 protected:
  /// Puts the tourney as it is into the file, with another name for saving inside.
  void SaveTo(const std::string& path) {
    ASSERT_TRUE(file.Save(tourney, "/t/own.ini"));
    machine.files.Put(path, std::string(machine.files.Bytes("/t/own.ini")));
    tourney.Reset();
    machine.TakeOutput();
  }

  std::string Output() { return machine.TakeOutput(); }
};

TEST_F(Resume, LoadsSpoolsAndSwitchesTheRunnerOnAndSavesToTheFileThatWasLoaded) {
  AddGames(3);
  GameNumber(2).status = kReady;
  SaveTo("/t/cup.ini");
  const std::string own = machine.files.Bytes("/t/own.ini");
  ASSERT_TRUE(ResumeTourney(room, "/t/cup.ini"));
  EXPECT_EQ(Output(),
            "Tourney loaded.\nAutoSave is now ON, save file: /t/cup.ini\n"
            "Game 1 spooled.\nGame 3 spooled.\n"
            "\n***************\nRunner started.\n***************\n> ");
  EXPECT_TRUE(tourney.Switch().IsRunning());
  EXPECT_FALSE(file.HasChanged(tourney)) << "what was spooled is saved";
  EXPECT_EQ(GameNumber(2).status, kReady) << "it has no result, and nothing is replayed";
  EXPECT_NE(machine.files.Bytes("/t/cup.ini").find("/t/cup.ini"), std::string::npos);
  EXPECT_EQ(machine.files.Bytes("/t/own.ini"), own);
}

TEST_F(Resume, AFileThatCannotBeLoadedLeavesTheTourneyAlone) {
  machine.files.Put("/t/no.ini", "PLAYER_FILE\n");
  EXPECT_FALSE(ResumeTourney(room, "/t/no.ini"));
  EXPECT_EQ(Output(), "Not a tourney file.\nLoading tourney failed!\n");
  EXPECT_FALSE(tourney.Switch().IsRunning());
  EXPECT_EQ(tourney.Settings().auto_save, 0);
  EXPECT_EQ(machine.files.Bytes("/t/no.ini"), "PLAYER_FILE\n");
}

TEST_F(Resume, AnOrdinaryTourneyFileIsNotRefused) {
  SaveTo("/t/cup.ini");
  EXPECT_EQ(WhyNotResumed(machine.files, "/t/cup.ini"), "");
}

TEST_F(Resume, AFileOfAnEmergencyIsRefusedWithWhatToDo) {
  SaveTo("/t/emergency.ini");
  const std::string why = WhyNotResumed(machine.files, "/t/emergency.ini");
  EXPECT_NE(why.find("'/t/emergency.ini'"), std::string::npos) << why;
  EXPECT_NE(why.find("'load emergency.ini' and 'save'"), std::string::npos) << why;
  EXPECT_NE(WhyNotResumed(machine.files, "/t\\emergency.old.ini"), "");
  EXPECT_NE(WhyNotResumed(machine.files, "emergency.ini"), "");
}

TEST_F(Resume, WhatIsMissingOrNoTourneyFileIsRefused) {
  EXPECT_EQ(WhyNotResumed(machine.files, "/t/none"), "--resume: '/t/none' cannot be read.");
  machine.files.Put("/t/empty", "");
  EXPECT_EQ(WhyNotResumed(machine.files, "/t/empty"), "--resume: '/t/empty' is no tourney file.");
  machine.files.Put("/t/text", "TOURNEY_FILES\n");
  EXPECT_EQ(WhyNotResumed(machine.files, "/t/text"), "--resume: '/t/text' is no tourney file.");
}

}  // namespace
}  // namespace tarvendo
