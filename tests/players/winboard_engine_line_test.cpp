// Engines as WinBoard 4.9's own dialog writes them: a name, and the command behind an option.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/captured_log.h"
#include "players/player_database.h"
#include "players/player_file.h"
#include "players/winboard_import.h"

namespace tarvendo {
namespace {

constexpr const char* kOptionsWithMinus[] = {"-fcp",
                                             "-scp",
                                             "-fd",
                                             "-sd",
                                             "-fn",
                                             "-sn",
                                             "-fUCI",
                                             "-sUCI",
                                             "-variant",
                                             "-fNoOwnBookUCI",
                                             "-sNoOwnBookUCI",
                                             "-firstProtocolVersion",
                                             "-secondProtocolVersion"};

/// What the dialog left behind, byte for byte.
constexpr const char* kConfiguration =
    "/firstChessProgramNames={fmax /fd=Fairy-Max\r\n"
    "GNUChess\r\n"
    "\"GNUChes5 xboard\"\r\n"
    "\"Fairy-Max\" -fcp \"fairymax.exe\" -fd \"C:\\engines\\alpha\"\r\n"
    "\"Gamma\" -fcp \"randy.exe Gamma play\" -fd \"C:\\engines\\gamma\" -fUCI\r\n"
    "}\r\n"
    "/secondChessProgramNames={fmax /sd=Fairy-Max\r\n"
    "GNUChess\r\n"
    "\"GNUChes5 xboard\"\r\n"
    "}\r\n";

class WinboardEngineLine : public testing::Test {
 protected:
  /// The player of one line, who is the only one afterwards.
  const PlayerTexts& Only(const std::string& line, EngineList list = EngineList::kFirst) {
    database_ = PlayerDatabase();
    ImportEngineLine(line, true, list, database_);
    static const PlayerTexts nobody;
    EXPECT_LE(database_.Players().size(), 1U) << line;
    return database_.Players().empty() ? nobody : database_.Players().front().texts;
  }

  /// Imports two lists of lines.
  void Import(const std::string& first, const std::string& second) {
    EXPECT_TRUE(ImportWinboardIni(
        machine_.files,
        "/firstChessProgramNames={" + first + "\n}\n/secondChessProgramNames={" + second + "\n}\n",
        database_));
  }

  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const Player& player : database_.Players())
      names.push_back(player.texts.name);
    return names;
  }

  using Texts = std::vector<std::string>;

  CapturedLog machine_;
  PlayerDatabase database_;
};

TEST_F(WinboardEngineLine, TheConfigurationThatTheDialogLeavesBehindIsRead) {
  machine_.files.Put("winboard.ini", kConfiguration);
  EXPECT_TRUE(ReadPlayerFile(machine_.files, "winboard.ini", "", database_));
  EXPECT_EQ(Names(), (Texts{"fmax", "GNUChess", "GNUChes5 xboard", "Fairy-Max", "Gamma"}));
  const PlayerTexts& first = database_.Players()[0].texts;
  EXPECT_EQ(first.program_exe, "fmax");
  EXPECT_EQ(first.dir, "Fairy-Max");
  EXPECT_EQ(first.white_options + first.black_options, "");
  const PlayerTexts& fairy = database_.Players()[3].texts;
  EXPECT_EQ(fairy.program_exe, "fairymax.exe");
  EXPECT_EQ(fairy.dir, "C:\\engines\\alpha");
  EXPECT_EQ(fairy.init_string + fairy.white_options + fairy.black_options, "");
  const PlayerTexts& gamma = database_.Players()[4].texts;
  EXPECT_EQ(gamma.program_exe, "randy.exe");
  EXPECT_EQ(gamma.init_string, "Gamma play");
  EXPECT_EQ(gamma.dir, "C:\\engines\\gamma");
  EXPECT_EQ(gamma.white_options, "/fUCI");
  EXPECT_EQ(gamma.black_options, "/sUCI");
}

TEST_F(WinboardEngineLine, WhatStandsBehindTheBraceIsTheFirstEngine) {
  Import("one -x", "  \"two three\"");
  EXPECT_EQ(Names(), (Texts{"one", "two three"}));
  EXPECT_EQ(database_.Players()[0].texts.init_string, "-x");
}

TEST_F(WinboardEngineLine, AListMayEndOnTheLineOnWhichItBegins) {
  EXPECT_TRUE(ImportWinboardIni(
      machine_.files, "/firstChessProgramNames={}\r\n/secondChessProgramNames={a }\n", database_));
  EXPECT_EQ(Names(), Texts{"a"});
}

TEST_F(WinboardEngineLine, EachOptionThatTheDialogWritesWithAMinusIsOne) {
  for (const std::string option : kOptionsWithMinus) {
    const std::string with_slash = "/" + option.substr(1);
    for (const std::string& line : {"a -z " + option + " x", "a " + option + "=x"}) {
      std::string slashed = line;
      slashed.replace(slashed.find(option), option.size(), with_slash);
      const PlayerTexts expected = Only(slashed);
      const PlayerTexts& texts = Only(line);
      EXPECT_EQ(texts.name, expected.name) << line;
      EXPECT_EQ(texts.program_exe, expected.program_exe) << line;
      EXPECT_EQ(texts.init_string, expected.init_string) << line;
      EXPECT_EQ(texts.dir, expected.dir) << line;
      EXPECT_EQ(texts.white_options, expected.white_options) << line;
      EXPECT_EQ(texts.black_options, expected.black_options) << line;
      EXPECT_EQ(texts.init_string.find(option), std::string::npos) << line;
    }
  }
  EXPECT_EQ(Only("a -z -fUCI -variant nocastle").white_options, "/fUCI /variant nocastle");
}

TEST_F(WinboardEngineLine, EveryOtherWordWithAMinusStaysAnArgumentOfTheEngine) {
  for (const std::string word : {"-fuci", "-fUCIx", "-FD", "-fdx", "--fd", "-f", "-s", "-uci",
                                 "-fUCCI", "-firstDirectory", "-", "\"-fUCI\"", "'-fd'"}) {
    const PlayerTexts& texts = Only("a " + word + " b");
    EXPECT_EQ(texts.init_string, word + " b");
    EXPECT_EQ(texts.white_options + texts.dir, "") << word;
  }
}

TEST_F(WinboardEngineLine, AWordWithAMinusBehindAnOptionStaysAsItIs) {
  EXPECT_EQ(Only("a /x -y").white_options, "/x -y");
  EXPECT_EQ(Only("Gamma -fcp a -y").white_options, "-y");
}

TEST_F(WinboardEngineLine, WithoutTheCommandsOptionALineIsOfOneColour) {
  const PlayerTexts& first = Only("\"my engine.exe\" -fd \"c:\\my engines\" -fUCI");
  EXPECT_EQ(first.program_exe, "my engine.exe");
  EXPECT_EQ(first.name, "my engine");
  EXPECT_EQ(first.dir, "c:\\my engines");
  EXPECT_EQ(first.white_options, "/fUCI");
  EXPECT_EQ(first.black_options, "");
  const PlayerTexts& second = Only("a -sd=x -sUCI", EngineList::kSecond);
  EXPECT_EQ(second.dir, "x");
  EXPECT_EQ(second.white_options, "");
  EXPECT_EQ(second.black_options, "/sUCI");
}

TEST_F(WinboardEngineLine, TheDirectoryMayStandWithoutQuotesAndBehindAnEqualsSign) {
  for (const std::string option : {"-fd C:\\x", "-fd=C:\\x", "/fd=C:\\x", "/fd C:\\x",
                                   "-fd='C:\\x'", "/firstDirectory=\"C:\\x\"", "-sd C:\\x"}) {
    EXPECT_EQ(Only("Gamma -fcp a.exe " + option).dir, "C:\\x") << option;
  }
  EXPECT_EQ(Only("Gamma -fcp a.exe -fd \"C:\\my engines\\x y\\\" -fUCI").dir,
            "C:\\my engines\\x y\\");
  EXPECT_EQ(Only("Gamma -fcp a.exe -fd \"\"").dir, "");
  EXPECT_EQ(Only("Gamma -fcp a.exe -fd").dir, "");
}

TEST_F(WinboardEngineLine, TheCommandsFirstWordIsTheProgramAndTheRestItsInitString) {
  const PlayerTexts& plain = Only("Gamma /fcp=a.exe");
  EXPECT_EQ(plain.program_exe, "a.exe");
  EXPECT_EQ(plain.init_string, "");
  const PlayerTexts& path = Only("\"My Gamma\" -fcp '\"C:\\my engines\\a b.exe\"  -x=1 \"y  z\"'");
  EXPECT_EQ(path.name, "My Gamma");
  EXPECT_EQ(path.program_exe, "C:\\my engines\\a b.exe");
  EXPECT_EQ(path.init_string, "-x=1 \"y  z\"");
  EXPECT_EQ(Only("Gamma -fcp /usr/games/a").program_exe, "/usr/games/a");
  EXPECT_EQ(Only("Gamma -scp \"a -b\"").init_string, "-b");
}

TEST_F(WinboardEngineLine, WhatStandsBeforeTheOptionsIsTheName) {
  EXPECT_EQ(Only("Gamma -fcp a").name, "Gamma");
  EXPECT_EQ(Only("\"Gamma the  Great\" -fcp a").name, "Gamma the  Great");
  EXPECT_EQ(Only("'Gamma \"the\" Great' -fcp a").name, "Gamma \"the\" Great");
  EXPECT_EQ(Only("Gamma  Ray -x -fUCI -fcp a").name, "Gamma Ray -x");
  EXPECT_EQ(Only("-fcp \"c:\\x\\Delta.exe y\"").name, "Delta");
}

TEST_F(WinboardEngineLine, AnOptionForTheNameCountsMoreThanWhatStandsBefore) {
  for (const std::string option : {"-fn", "-sn", "/fn", "/sn", "/name", "/FN"}) {
    const PlayerTexts& texts = Only("Gamma -fcp a " + option + " \"Delta X\" -fUCI");
    EXPECT_EQ(texts.name, "Delta X") << option;
    EXPECT_EQ(texts.white_options, "/fUCI") << option;
  }
}

TEST_F(WinboardEngineLine, EachOptionOfOneColourIsStoredForTheOtherToo) {
  const std::string options = " -fNoOwnBookUCI -firstProtocolVersion 1 /firstTimeOdds=2 -fUCI";
  for (const EngineList list : {EngineList::kFirst, EngineList::kSecond}) {
    const PlayerTexts& texts = Only("Gamma -fcp a" + options, list);
    EXPECT_EQ(texts.white_options, "/fNoOwnBookUCI /firstProtocolVersion 1 /firstTimeOdds 2 /fUCI");
    EXPECT_EQ(texts.black_options,
              "/sNoOwnBookUCI /secondProtocolVersion 1 /secondTimeOdds 2 /sUCI");
  }
  const PlayerTexts& black = Only("Gamma -scp a -sUCI -secondProtocolVersion 1");
  EXPECT_EQ(black.white_options, "/fUCI /firstProtocolVersion 1");
  EXPECT_EQ(black.black_options, "/sUCI /secondProtocolVersion 1");
}

TEST_F(WinboardEngineLine, AnOptionOfNoColourIsStoredForBoth) {
  const PlayerTexts& texts = Only("Gamma -fcp a -variant knightmate /fUCI");
  EXPECT_EQ(texts.white_options, "/variant knightmate /fUCI");
  EXPECT_EQ(texts.black_options, "/variant knightmate /sUCI");
}

TEST_F(WinboardEngineLine, AnOptionThatIsGivenForBothColoursIsStoredOnce) {
  const PlayerTexts& texts = Only("Gamma -fcp a -fUCI -sUCI /x=1 /x=1 /x=2");
  EXPECT_EQ(texts.white_options, "/fUCI /x 1 /x 2");
  EXPECT_EQ(texts.black_options, "/sUCI /x 1 /x 2");
}

TEST_F(WinboardEngineLine, ALineThatLacksItsCommandAddsNobody) {
  for (const std::string line : {"Gamma -fcp", "Gamma -fcp \"\"", "-fcp", "Gamma -fcp ' '"}) {
    Only(line);
    EXPECT_TRUE(database_.Players().empty()) << line;
  }
  EXPECT_EQ(machine_.TakeOutput(), "");
}

TEST_F(WinboardEngineLine, AnEngineInBothListsHasItsOptionsOnce) {
  Import("Gamma -fcp a -fUCI -fNoOwnBookUCI", "Gamma -scp a -sNoOwnBookUCI -sUCI");
  EXPECT_EQ(machine_.TakeOutput(), "Player Gamma created.\n");
  ASSERT_EQ(database_.Players().size(), 1U);
  EXPECT_EQ(database_.Players()[0].texts.white_options, "/fUCI /fNoOwnBookUCI");
  EXPECT_EQ(database_.Players()[0].texts.black_options, "/sUCI /sNoOwnBookUCI");
}

TEST_F(WinboardEngineLine, WhatTheSecondListAloneHasIsAdded) {
  Import("Gamma -fcp a -fUCI", "Gamma -scp a -sUCI -secondProtocolVersion 1");
  ASSERT_EQ(database_.Players().size(), 1U);
  EXPECT_EQ(database_.Players()[0].texts.white_options, "/fUCI /firstProtocolVersion 1");
  EXPECT_EQ(database_.Players()[0].texts.black_options, "/sUCI /secondProtocolVersion 1");
}

TEST_F(WinboardEngineLine, TheSameConfigurationAgainAddsNoOption) {
  for (int times = 0; times < 4; ++times) {
    Import("Gamma -fcp a -fUCI\nb /fUCI /x", "b /sUCI");
    ASSERT_EQ(Names(), (Texts{"Gamma", "b"}));
    EXPECT_EQ(database_.Players()[0].texts.white_options, "/fUCI");
    EXPECT_EQ(database_.Players()[0].texts.black_options, "/sUCI");
    // What a list does not say of a colour is merged as nothing behind a blank, but once only.
    EXPECT_EQ(database_.Players()[1].texts.white_options, "/fUCI /x ");
    EXPECT_EQ(database_.Players()[1].texts.black_options, times == 0 ? "/sUCI" : "/sUCI ");
  }
}

TEST_F(WinboardEngineLine, ATextThatFitsIntoNoLineOfARecordIsCut) {
  const std::string name(260, 'n');
  const std::string cut_name(254, 'n');
  const std::string line = "\"" + name + "\" -fcp \"a b\" -fd " + std::string(255, 'd');
  const PlayerTexts& texts = Only(line);
  EXPECT_EQ(texts.name, cut_name);
  EXPECT_EQ(texts.dir, std::string(254, 'd'));
  const std::string name_line = "Name of player '" + cut_name + "' cut to 254 characters.\n";
  EXPECT_EQ(machine_.TakeOutput(), name_line + "Player " + cut_name + " created.\nDir of player '" +
                                       cut_name + "' cut to 254 characters.\n");
  // It is the same player when it comes again, and keeps its directory.
  ImportEngineLine(line, true, EngineList::kFirst, database_);
  EXPECT_EQ(database_.Players().size(), 1U);
  EXPECT_EQ(machine_.TakeOutput(), name_line);
}

TEST_F(WinboardEngineLine, AnEngineWithoutANameIsCutToo) {
  const PlayerTexts& texts = Only("c:\\.exe -fd " + std::string(300, 'd'));
  EXPECT_EQ(texts.name, "PlayerName");
  EXPECT_EQ(texts.dir.size(), 254U);
}

TEST_F(WinboardEngineLine, MergedOptionsThatFitIntoNoLineOfARecordAreCut) {
  Import("Gamma -fcp a /x=" + std::string(240, 'x'), "Gamma -fcp a /y=" + std::string(240, 'y'));
  EXPECT_EQ(machine_.TakeOutput(),
            "Player Gamma created.\nWhiteOptions of player 'Gamma' cut to 254 characters.\n"
            "BlackOptions of player 'Gamma' cut to 254 characters.\n");
  EXPECT_EQ(database_.Players()[0].texts.white_options,
            "/x " + std::string(240, 'x') + " /y " + std::string(7, 'y'));
}

}  // namespace
}  // namespace tarvendo
