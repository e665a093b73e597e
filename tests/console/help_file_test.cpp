#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "console/command_table.h"
#include "console/help.h"
#include "fakes/captured_log.h"
#include "reports/table_options.h"

// The help file as it is installed beside the program. TARVENDO_HELP_FILE is its path.

namespace tarvendo {
namespace {

struct Asked {
  const char* word;    ///< what is typed behind help
  const char* header;  ///< how the topic that must come begins
};

/// Every abbreviation that help knows.
constexpr std::array<Asked, 40> kAbbreviations = {{
    {"adda", "AddAllPlayers:"},
    {"addp", "AddPlayer:"},
    {"remp", "RemovePlayer:"},
    {"removep", "RemovePlayer:"},
    {"avai", "Available:"},
    {"createp", "CreatePlayer:"},
    {"delp", "DeletePlayer:"},
    {"deletep", "DeletePlayer:"},
    {"forf", "ForfeitPlayer:"},
    {"game", "Game:"},
    {"geta", "GetAllResults:"},
    {"load", "Load:"},
    {"remg", "RemoveGames:"},
    {"removeg", "RemoveGames:"},
    {"resp", "ReSpool:"},
    {"showp", "ShowPlayers:"},
    {"spool", "Spool:"},
    {"read", "ReadPlayers:"},
    {"replay", "Replay:"},
    {"reset", "Reset:"},
    {"save", "Save:"},
    {"writ", "WritePlayers:"},
    {"showg", "ShowGames:"},
    {"run", "Run:"},
    {"stop", "Stop:"},
    {"get", "Get:"},
    {"set", "Set:"},
    {"tab", "Table:"},
    {"tex", "TextTable:"},
    {"vie", "View:"},
    {"createrr", "CreateRRGames:"},
    {"qui", "Quit:"},
    {"help", "Help:"},
    {"createb", "CreateBrackets:"},
    {"pair", "Pair:"},
    {"showb", "ShowBrackets:"},
    {"unsp", "UnSpool:"},
    {"addg", "AddGroup:"},
    {"hou", "Housekeep:"},
    {"playe", "Player:"},
}};

/// Every setting that get and set know.
constexpr std::array<const char*, 19> kSettings = {
    "AutoRun",     "AutoSave",     "BlackOptions", "Computer",       "FilesPath",
    "HashTables",  "Name",         "PgnFile",      "PicsDir",        "Ponder",
    "Rounds",      "RunnerStatus", "SubRounds",    "SaveDebugFiles", "Tablebases",
    "TimeControl", "Type",         "WhiteOptions", "WinboardPath"};

std::string ToLower(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

class HelpFile : public testing::Test {
 protected:
  HelpFile() {
    std::ifstream file(TARVENDO_HELP_FILE, std::ios::binary);
    std::stringstream bytes;
    bytes << file.rdbuf();
    text_ = bytes.str();
    machine_.files.Put("/prog/TourneyHelp.txt", text_);
    std::istringstream lines(text_);
    for (std::string line; std::getline(lines, line);)
      lines_.push_back(line);
  }

  std::string Ask(const std::string& word) {
    Help("help " + word + "\n", machine_.files, "/prog/");
    return machine_.TakeOutput();
  }

  /// The lines that begin topics.
  std::vector<std::string> Headers() const {
    std::vector<std::string> headers;
    bool next = true;
    for (const std::string& line : lines_) {
      if (next) headers.push_back(line);
      next = line.starts_with("-ENDTOPIC-");
    }
    return headers;
  }

  /// The word that stands in the topic behind this text; empty when the text is not there.
  static std::string WordBehind(const std::string& topic, const std::string& text) {
    const std::size_t found = topic.find(text);
    if (found == std::string::npos) return "";
    const std::size_t word = found + text.size();
    return topic.substr(word, topic.find_first_of(" .)\n", word) - word);
  }

  /// The names of all topics, as their headers have them.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const std::string& header : Headers())
      names.push_back(header.substr(0, header.find(':')));
    return names;
  }

  CapturedLog machine_;
  std::string text_;
  std::vector<std::string> lines_;
};

TEST_F(HelpFile, EveryAbbreviationFindsItsOwnTopic) {
  for (const Asked& asked : kAbbreviations) {
    EXPECT_TRUE(Ask(asked.word).starts_with(asked.header)) << asked.word << ": " << Ask(asked.word);
  }
}

TEST_F(HelpFile, AWordShorterThanAnAbbreviationFindsAnotherTopicOrNone) {
  for (const std::string word :
       {"adda", "addp", "remp", "removep", "avai", "createp", "forf", "game"}) {
    const std::string shorter = word.substr(0, word.size() - 1);
    EXPECT_EQ(Ask(shorter), "Command " + shorter + " not found.\n");
  }
  for (const Asked& asked : kAbbreviations) {
    const std::string word = asked.word;
    EXPECT_FALSE(Ask(word.substr(0, word.size() - 1)).starts_with(asked.header)) << word;
  }
}

TEST_F(HelpFile, EveryCommandOfTheListFindsItsOwnTopic) {
  Help("help\n", machine_.files, "/prog/");
  std::istringstream names(machine_.TakeOutput());
  std::string line;
  std::getline(names, line);
  std::getline(names, line);
  int count = 0;
  for (std::string name; names >> name; ++count) {
    EXPECT_TRUE(Ask(name).starts_with(name + ":")) << name;
    EXPECT_EQ(Ask(ToLower(name)), Ask(name));
  }
  EXPECT_EQ(count, 36);
}

TEST_F(HelpFile, HasATopicForEachNameAndNoOther) {
  std::set<std::string> expected;
  for (const Asked& asked : kAbbreviations)
    expected.insert(asked.header);
  std::set<std::string> found;
  for (const std::string& header : Headers()) {
    EXPECT_TRUE(found.insert(header.substr(0, header.find(':') + 1)).second) << header;
  }
  EXPECT_EQ(found, expected);
  EXPECT_EQ(found.size(), 37U);
}

TEST_F(HelpFile, FitsAConsoleOfEightyColumns) {
  for (const std::string& line : lines_)
    EXPECT_LE(line.size(), 79U) << line;
}

TEST_F(HelpFile, IsPlainAsciiWithoutTabsAndTrailingBlanks) {
  for (const char c : text_)
    ASSERT_TRUE(c == '\n' || (c >= ' ' && c <= '~'));
  for (const std::string& line : lines_)
    EXPECT_FALSE(line.ends_with(' ')) << line;
}

TEST_F(HelpFile, EndsWithTheEndOfATopic) {
  EXPECT_TRUE(text_.ends_with("\n-ENDTOPIC-\n"));
}

TEST_F(HelpFile, HasNoPageBreakThatWouldSwallowALetter) {
  for (const std::string& line : lines_)
    EXPECT_FALSE(line.starts_with("PAUSE")) << line;
}

TEST_F(HelpFile, TellsEverySettingUnderGetAndUnderSet) {
  for (const std::string setting : kSettings) {
    EXPECT_NE(Ask("get").find("\n  " + setting + " "), std::string::npos) << setting;
    // The runner's status is only to be looked at.
    const bool can_be_set = setting != "RunnerStatus";
    EXPECT_EQ(Ask("set").find("\n  set " + ToLower(setting) + " ") != std::string::npos, can_be_set)
        << setting;
  }
}

TEST_F(HelpFile, HasAnExampleForEveryCommand) {
  for (const Asked& asked : kAbbreviations) {
    EXPECT_NE(Ask(asked.word).find("\n    > "), std::string::npos) << asked.word;
  }
}

TEST_F(HelpFile, EveryShortFormIsTheShortestThatReachesItsCommand) {
  for (const std::string& name : Names()) {
    const Command* command = FindCommand(ToLower(name));
    const std::string shortest = WordBehind(Ask(name), "\nShort: ");
    ASSERT_FALSE(shortest.empty()) << name;
    const Command* reached = FindCommand(shortest);
    ASSERT_NE(reached, nullptr) << name;
    EXPECT_EQ(reached->run, command->run) << name;
    const Command* missed = FindCommand(shortest.substr(0, shortest.size() - 1));
    EXPECT_TRUE(missed == nullptr || missed->run != command->run) << name;
  }
}

TEST_F(HelpFile, WhereHelpWantsMoreThanTheShortFormTheTopicSaysSo) {
  for (const std::string& name : Names()) {
    const std::string topic = Ask(name);
    const std::string shortest = WordBehind(topic, "\nShort: ");
    const std::string wanted = WordBehind(topic, "(but help wants at least: help ");
    const std::string known = wanted.empty() ? shortest : wanted;
    EXPECT_EQ(Ask(known), topic) << name;
    if (!wanted.empty()) {
      EXPECT_NE(Ask(wanted.substr(0, wanted.size() - 1)), topic) << name;
      EXPECT_NE(Ask(shortest), topic) << name;
    }
  }
}

TEST_F(HelpFile, EveryTopicSaysWhatToDoNext) {
  for (const std::string& name : Names()) {
    if (name != "Help") {
      EXPECT_NE(Ask(name).find("Next:"), std::string::npos) << name;
    }
  }
}

TEST_F(HelpFile, TellsEverySwitchOfTheTables) {
  for (const TableSwitch& table_switch : kTableSwitches) {
    for (const std::string_view word : {table_switch.on, table_switch.off}) {
      const std::string listed = "  " + std::string(word) + " ";
      EXPECT_NE(Ask("table").find(listed), std::string::npos) << word;
    }
  }
}

}  // namespace
}  // namespace tarvendo
