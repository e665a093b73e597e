#include "players/engines_json.h"

#include <gtest/gtest.h>

#include "fakes/captured_log.h"
#include "players/player_database.h"
#include "players/player_file.h"

namespace tarvendo {
namespace {

class EnginesJson : public ::testing::Test {
 protected:
  /// Reads the text as a file and gives what was printed.
  std::string Read(const std::string& text) {
    machine_.files.Put("engines.json", text);
    is_read_ = ReadPlayerFile(machine_.files, "engines.json", "", players_);
    return machine_.TakeOutput();
  }

  /// What is printed of a text from which nobody is added.
  std::string WhyNot(const std::string& text) {
    const std::size_t before = players_.Players().size();
    const std::string output = Read(text);
    EXPECT_FALSE(is_read_) << text;
    EXPECT_EQ(players_.Players().size(), before) << text;
    const std::string head = "The file 'engines.json' is no list of engines: ";
    EXPECT_EQ(output.substr(0, head.size()), head);
    return output.substr(std::min(head.size(), output.size()));
  }

  const PlayerTexts& Only() { return players_.Players().back().texts; }

  CapturedLog machine_;
  PlayerDatabase players_;
  bool is_read_ = false;
};

TEST_F(EnginesJson, AnEngineForUciHasItsFieldsAndOptions) {
  EXPECT_EQ(Read(R"([ {"name": "Stockfish 15", "command": "/usr/games/stockfish --x  y",
                       "workingDirectory": "/tmp/s", "protocol": "uci",
                       "initStrings": ["setoption name Skill Level value 3",
                                       "setoption name Hash value 64"]} ])"),
            "Player Stockfish 15 created.\n");
  EXPECT_TRUE(is_read_);
  EXPECT_EQ(Only().name, "Stockfish 15");
  EXPECT_EQ(Only().program_exe, "/usr/games/stockfish");
  EXPECT_EQ(Only().init_string, "--x  y");
  EXPECT_EQ(Only().dir, "/tmp/s");
  EXPECT_EQ(Only().white_options, "/fUCI /firstOptions=\"Skill Level=3,Hash=64\"");
  EXPECT_EQ(Only().black_options, "/sUCI /secondOptions=\"Skill Level=3,Hash=64\"");
}

TEST_F(EnginesJson, AnEngineForXboardSendsItsLinesBehindWinboardsOwn) {
  Read(R"([{"name": "Fmax", "command": "fairymax", "protocol": "xboard",
            "initStrings": ["memory 64", "cores 2"]}])");
  EXPECT_EQ(Only().white_options, R"(/firstInitString="new\nrandom\nmemory 64\ncores 2\n")");
  EXPECT_EQ(Only().black_options, R"(/secondInitString="new\nrandom\nmemory 64\ncores 2\n")");
}

TEST_F(EnginesJson, WithoutProtocolItIsForXboardAndWithoutNameCalledLikeItsProgram) {
  EXPECT_EQ(Read(R"([{"command": "\"C:\\my engines\\Crafty.EXE\" -b", "name": ""}])"),
            "Player Crafty created.\n");
  EXPECT_EQ(Only().program_exe, "C:\\my engines\\Crafty.EXE");
  EXPECT_EQ(Only().init_string, "-b");
  EXPECT_EQ(Only().white_options, "");
}

TEST_F(EnginesJson, WhatCannotBeCarriedOverIsNamed) {
  EXPECT_EQ(Read(R"([{"name": "A", "command": "a", "protocol": "usi", "restart": "on",
                      "whitepov": true, "options": [{"name": "Hash", "value": 1}],
                      "variants": ["standard", "atomic"], "something": 5,
                      "initStrings": ["say \"hi\"", "x"]}])"),
            "Player A created.\nNot carried over of A: initStrings, options, protocol, restart, "
            "something, variants, whitepov.\n");
  EXPECT_EQ(Only().white_options, R"(/firstInitString="new\nrandom\nx\n")");
}

TEST_F(EnginesJson, WhatSaysNoMoreThanHoldsAnywayIsNot) {
  EXPECT_EQ(Read(R"([{"name": "A", "command": "a", "restart": "auto", "whitepov": false,
                      "stderrFile": "", "options": [], "variants": ["standard"],
                      "timeoutScale": 1, "extra": null, "initStrings": []}])"),
            "Player A created.\n");
}

TEST_F(EnginesJson, UciLinesThatAreNoPlainOptionAreNamed) {
  for (const char* line :
       {"ucinewgame", "setoption name Clear Hash", "setoption name A value a,b",
        "setoption name A=B value c", "setoption name A value ", "setoption name  value x"}) {
    Read(std::string(R"([{"name": "A", "command": "a", "protocol": "uci", "initStrings": [")") +
         line + "\"]}]");
    EXPECT_EQ(Only().white_options, "/fUCI") << line;
    players_.DeletePlayer(1);
    machine_.TakeOutput();
  }
}

TEST_F(EnginesJson, APlayerWhoIsThereAlreadyGetsTheOptionsThatItDoesNotHave) {
  Read(R"([{"name": "A", "command": "a", "protocol": "uci"}])");
  EXPECT_EQ(Read(R"([{"name": "A", "command": "b", "protocol": "uci",
                      "initStrings": ["setoption name Hash value 64"]}])"),
            "");
  EXPECT_EQ(players_.Players().size(), 1U);
  EXPECT_EQ(Only().program_exe, "a");
  EXPECT_EQ(Only().white_options, "/fUCI /firstOptions=\"Hash=64\"");
}

TEST_F(EnginesJson, AnEmptyListAndAByteOrderMarkAreGood) {
  EXPECT_EQ(Read("\xEF\xBB\xBF \n []"), "");
  EXPECT_TRUE(is_read_);
}

TEST_F(EnginesJson, BrokenJsonChangesNothingAndNamesTheLine) {
  EXPECT_EQ(WhyNot("[{\"name\": \"A\", \"command\": \"a\"},\n\n{\"name\" \"B\"}]"),
            "line 3 is no JSON.\n");
  EXPECT_EQ(WhyNot("[{\"name\": \"A\", \"command\": \"a\"}"), "line 1 is no JSON.\n");
  EXPECT_EQ(WhyNot("[{\"name\": \"\xE4\", \"command\": \"a\"}]"), "line 1 is no JSON.\n");
  EXPECT_EQ(WhyNot("[] []"), "line 1 is no JSON.\n");
}

TEST_F(EnginesJson, ANumberThatNoReaderHasRoomForChangesNothing) {
  EXPECT_EQ(WhyNot(R"([{"command": "a", "depth": 1e400}])"),
            "it holds a number that is too large.\n");
}

TEST_F(EnginesJson, AFieldOfTheWrongKindChangesNothing) {
  EXPECT_EQ(WhyNot("[1]"), "engine 1 is no object.\n");
  EXPECT_EQ(WhyNot(R"([{"command": "a"}, {"name": "B"}])"), "engine 2 has no 'command'.\n");
  EXPECT_EQ(WhyNot(R"([{"command": "  "}])"), "engine 1 has no 'command'.\n");
  EXPECT_EQ(WhyNot(R"([{"command": ["a"]}])"),
            "engine 1 has a 'command' that is no text on one line.\n");
  EXPECT_EQ(WhyNot(R"([{"command": "a", "name": "A\nEND_PLAYER"}])"),
            "engine 1 has a 'name' that is no text on one line.\n");
  EXPECT_EQ(WhyNot(R"([{"command": "a\u0000b"}])"),
            "engine 1 has a 'command' that is no text on one line.\n");
  EXPECT_EQ(WhyNot(R"([{"command": "a", "initStrings": [{}]}])"),
            "engine 1 has an 'initStrings' that is no list of texts.\n");
}

TEST_F(EnginesJson, DeepNestingIsNoHarm) {
  const std::size_t depth = 200000;
  EXPECT_EQ(WhyNot(std::string(depth, '[')), "line 1 is no JSON.\n");
  EXPECT_EQ(Read("[{\"command\": \"a\", \"options\": " + std::string(depth, '[') +
                 std::string(depth, ']') + "}]"),
            "Player a created.\nNot carried over of a: options.\n");
}

TEST_F(EnginesJson, ALongTextIsCutLikeEveryOther) {
  const std::string output =
      Read("[{\"name\": \"A\", \"command\": \"a " + std::string(300, 'x') + "\"}]");
  EXPECT_EQ(Only().init_string.size(), 254U);
  EXPECT_NE(output.find("cut to 254 characters"), std::string::npos) << output;
}

}  // namespace
}  // namespace tarvendo
