#include "players/winboard_import.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/captured_log.h"
#include "players/player_database.h"
#include "players/player_file.h"

namespace tarvendo {
namespace {

constexpr const char* kNoSecond = "/secondChessProgramNames=\"\"\n";

class WinboardImport : public testing::Test {
 protected:
  bool Import(const std::string& text) {
    const bool understood = ImportWinboardIni(machine_.files, text, database_);
    output_ = machine_.TakeOutput();
    return understood;
  }

  /// Imports one engine line of the first list, in braces.
  const PlayerTexts& First(const std::string& line) { return Line(line, true, EngineList::kFirst); }

  const PlayerTexts& Line(const std::string& line, bool in_braces, EngineList list) {
    ImportEngineLine(line, in_braces, list, database_);
    static const PlayerTexts nobody;
    return database_.Players().empty() ? nobody : database_.Players().back().texts;
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
  std::string output_;
};

TEST_F(WinboardImport, ABracedListYieldsOnePlayerPerLine) {
  EXPECT_TRUE(
      Import("/firstChessProgramNames={\nfmax\nGNUChess\ncrafty\n}\n" + std::string(kNoSecond)));
  EXPECT_EQ(Names(), (Texts{"fmax", "GNUChess", "crafty"}));
  EXPECT_EQ(output_, "Player fmax created.\nPlayer GNUChess created.\nPlayer crafty created.\n");
}

TEST_F(WinboardImport, AnEngineInBothListsIsOnePlayerWithTheOptionsOfBothColours) {
  EXPECT_TRUE(
      Import("/firstChessProgramNames={\nfmax /fd=one /fNoOwnBookUCI\n}\n"
             "/secondChessProgramNames={\nfmax /sd=two /sNoOwnBookUCI\n}\n"));
  ASSERT_EQ(database_.Players().size(), 1U);
  const PlayerTexts& texts = database_.Players()[0].texts;
  EXPECT_EQ(texts.dir, "one");
  // Merging appends behind a blank, also the nothing that the second list says of White.
  EXPECT_EQ(texts.white_options, "/fNoOwnBookUCI ");
  EXPECT_EQ(texts.black_options, "/sNoOwnBookUCI");
  EXPECT_EQ(output_, "Player fmax created.\n");
}

TEST_F(WinboardImport, TheListsAreFoundInAnyLetterCase) {
  EXPECT_TRUE(Import("/FIRSTchessprogramNAMES={\na\n}\n/secondCHESSprogramnames={\nb\n}\n"));
  EXPECT_EQ(Names(), (Texts{"a", "b"}));
}

TEST_F(WinboardImport, TheCharacterBehindTheOptionMayBeABlank) {
  EXPECT_TRUE(Import("/firstChessProgramNames {\na\n}\n/secondChessProgramNames \"b\"\n"));
  EXPECT_EQ(Names(), (Texts{"a", "b"}));
}

TEST_F(WinboardImport, ReadsWhatTodaysWinBoardWritesOnWindows) {
  machine_.files.Put(
      "winboard.ini",
      ";\r\n; WinBoard 4.9\r\n;\r\n/tc=5\r\n"
      "/firstChessProgramNames={fmax /fd=Fairy-Max\r\nGNUChess\r\n"
      "\"GNUChes5 xboard\"\r\n\r\n\"my engine.exe\" xboard /fd=\"my engine dir\"\r\n}\r\n"
      "/saveGameFile=\"games.pgn\"\r\n"
      "/secondChessProgramNames={\r\nGNUChess\r\n}\r\n");
  EXPECT_TRUE(ReadPlayerFile(machine_.files, "winboard.ini", "", database_));
  EXPECT_EQ(Names(), (Texts{"fmax", "GNUChess", "GNUChes5 xboard", "my engine"}));
  EXPECT_EQ(database_.Players()[0].texts.dir, "Fairy-Max");
  EXPECT_EQ(database_.Players()[2].texts.program_exe, "GNUChes5 xboard");
  const PlayerTexts& last = database_.Players()[3].texts;
  EXPECT_EQ(last.program_exe, "my engine.exe");
  EXPECT_EQ(last.init_string, "xboard");
  EXPECT_EQ(last.dir, "my engine dir");
}

TEST_F(WinboardImport, BlankLinesInsideAListAddNobody) {
  EXPECT_TRUE(Import("/firstChessProgramNames={\n\n \t\na\n\n}\n" + std::string(kNoSecond)));
  EXPECT_EQ(Names(), Texts{"a"});
}

TEST_F(WinboardImport, OtherOptionsMayStandAroundTheLists) {
  EXPECT_TRUE(Import("/tc=5\n/firstChessProgramNames={\na\n}\n/saveGameFile=\"x\"\n" +
                     std::string(kNoSecond) + "/mps=40\n"));
  EXPECT_EQ(Names(), Texts{"a"});
}

TEST_F(WinboardImport, AnEmptyQuotedListHasNoEngines) {
  EXPECT_TRUE(Import("/firstChessProgramNames=\"\"\n" + std::string(kNoSecond)));
  EXPECT_EQ(output_, "");
}

TEST_F(WinboardImport, AQuotedListHoldsItsEnginesOnOneLine) {
  EXPECT_TRUE(
      Import("/firstChessProgramNames=\"one.exe\"\n"
             "/secondChessProgramNames=\"two.exe -y /sd='my dir'\\n'three four.exe'\\n\"\n"));
  EXPECT_EQ(Names(), (Texts{"one", "two", "three four"}));
  EXPECT_EQ(database_.Players()[1].texts.dir, "my dir");
  EXPECT_EQ(database_.Players()[1].texts.init_string, "-y");
  EXPECT_EQ(database_.Players()[2].texts.program_exe, "three four.exe");
}

TEST_F(WinboardImport, TheLastLineNeedsNoLineFeed) {
  EXPECT_TRUE(Import("/firstChessProgramNames={\na\n}\n/secondChessProgramNames={\nb\n}"));
  EXPECT_EQ(Names(), (Texts{"a", "b"}));
}

TEST_F(WinboardImport, AFileWithoutTheFirstListIsNotUnderstood) {
  EXPECT_FALSE(Import("/secondChessProgramNames={\nb\n}\n/tc=5\n"));
  EXPECT_EQ(output_, "Can't understand the line '/tc=5'");
}

TEST_F(WinboardImport, AFileWithoutTheSecondListIsNotUnderstoodButItsFirstListStays) {
  EXPECT_FALSE(Import("/firstChessProgramNames={\na\n}\n"));
  EXPECT_EQ(output_, "Player a created.\nCan't understand the line '}'");
  EXPECT_EQ(Names(), Texts{"a"});
}

TEST_F(WinboardImport, AnEmptyFileIsNotUnderstood) {
  EXPECT_FALSE(Import(""));
  EXPECT_EQ(output_, "Can't understand the line ''");
}

TEST_F(WinboardImport, ABraceThatIsNeverClosedIsNotUnderstood) {
  EXPECT_FALSE(Import("/firstChessProgramNames={\na\nb"));
  EXPECT_EQ(output_, "Player a created.\nPlayer b created.\nCan't understand the line 'b'");
}

TEST_F(WinboardImport, AQuoteThatIsNeverClosedIsNotUnderstood) {
  EXPECT_FALSE(Import("/firstChessProgramNames=\"one.exe\n" + std::string(kNoSecond)));
  EXPECT_EQ(output_, "Can't understand the line '/firstChessProgramNames=\"one.exe'");
}

TEST_F(WinboardImport, AnOptionWithoutAListIsNotUnderstood) {
  for (const std::string value : {"", "=", "= ", "=one.exe"}) {
    EXPECT_FALSE(Import("/firstChessProgramNames" + value + "\n" + kNoSecond)) << value;
    EXPECT_EQ(output_, "Can't understand the line '/firstChessProgramNames" + value + "'");
  }
}

TEST_F(WinboardImport, AMessageWithPercentSignsIsPrintedAsItIs) {
  EXPECT_FALSE(Import("100%s%n\n"));
  EXPECT_EQ(output_, "Can't understand the line '100%s%n'");
}

TEST_F(WinboardImport, TheClosingBraceMayHaveMoreBehindIt) {
  EXPECT_TRUE(Import("/firstChessProgramNames={\na\n  } x\n" + std::string(kNoSecond)));
  EXPECT_EQ(Names(), Texts{"a"});
}

TEST_F(WinboardImport, TheEnginesOfAnIncludeFileAreAdded) {
  machine_.files.Put("my engines.txt", "a /fd=x\n\nb\nc");
  for (const std::string brace : {"{@\"my engines.txt\"", "{ @ 'my engines.txt' }"}) {
    EXPECT_TRUE(Import("/firstChessProgramNames=" + brace + "\n}\n" + kNoSecond)) << brace;
    EXPECT_EQ(Names(), (Texts{"a", "b", "c"}));
    database_ = PlayerDatabase();
  }
}

TEST_F(WinboardImport, AnIncludeFileIsLookedForFromTheCurrentDirectory) {
  machine_.files.Put("/elsewhere/engines.txt", "a\n");
  machine_.files.ChangeDirectory("/elsewhere");
  EXPECT_TRUE(Import("/firstChessProgramNames={@engines.txt}\n" + std::string(kNoSecond)));
  EXPECT_EQ(Names(), Texts{"a"});
}

TEST_F(WinboardImport, AnIncludeFileThatCannotBeReadHasNoEngines) {
  machine_.files.MakeDirectory("/home/folder");
  for (const std::string name : {"missing.txt", "folder", ""}) {
    EXPECT_TRUE(Import("/firstChessProgramNames={@" + name + "\n}\n" + kNoSecond)) << name;
    EXPECT_EQ(output_, "");
  }
}

TEST_F(WinboardImport, AFileThatIncludesItselfIsReadOnce) {
  const std::string text =
      "/firstChessProgramNames={@winboard.ini\n}\n/secondChessProgramNames={\nb\n}\n";
  machine_.files.Put("winboard.ini", text);
  EXPECT_TRUE(Import(text));
  EXPECT_EQ(Names(), Texts{"b"});
}

TEST_F(WinboardImport, ALongLineCountsAsSeveral) {
  const std::string arguments(600 - 2, 'x');
  EXPECT_TRUE(Import("/firstChessProgramNames={\na " + arguments + "\n}\n" + kNoSecond));
  ASSERT_EQ(database_.Players().size(), 2U);
  EXPECT_EQ(database_.Players()[0].texts.init_string, std::string(254, 'x'));
  EXPECT_EQ(database_.Players()[1].texts.program_exe, std::string(90, 'x'));
}

TEST_F(WinboardImport, WhatStandsBehindANulByteIsNotSeen) {
  using std::string_literals::operator""s;
  EXPECT_TRUE(Import("/firstChessProgramNames={\na\0b\n\0c\n}\n"s + kNoSecond));
  EXPECT_EQ(Names(), Texts{"a"});
}

TEST_F(WinboardImport, AQuotedProgramPathWithBlanksStaysOneWord) {
  const PlayerTexts& texts = First("\"c:\\my engines\\Crafty.EXE\" -x \"two words\"\n");
  EXPECT_EQ(texts.program_exe, "c:\\my engines\\Crafty.EXE");
  EXPECT_EQ(texts.name, "Crafty");
  EXPECT_EQ(texts.init_string, "-x \"two words\"");
}

TEST_F(WinboardImport, TheWordsOfAnEngineLineFindTheirPlaces) {
  const PlayerTexts& texts =
      First("fmax  a   b /group=\"top ten\" /FD='my dir' /Name=\"Fairy Max\" /fUCI /x=\"a b\"");
  EXPECT_EQ(texts.program_exe, "fmax");
  EXPECT_EQ(texts.init_string, "a b");
  EXPECT_EQ(texts.group, "top ten");
  EXPECT_EQ(texts.dir, "my dir");
  EXPECT_EQ(texts.name, "Fairy Max");
  EXPECT_EQ(texts.white_options, "/fUCI /x \"a b\"");
  EXPECT_EQ(texts.black_options, "");
}

TEST_F(WinboardImport, TheSecondListHasItsOwnDirectoryOptionAndFillsBlackOptions) {
  const PlayerTexts& texts =
      Line("fmax /sd=here /fd=there /secondDirectory=near", true, EngineList::kSecond);
  EXPECT_EQ(texts.dir, "near");
  EXPECT_EQ(texts.white_options, "");
  EXPECT_EQ(texts.black_options, "/fd there");
}

TEST_F(WinboardImport, TheLongDirectoryOptionIsKnown) {
  EXPECT_EQ(First("a /firstDirectory=\"c:\\x\"").dir, "c:\\x");
  EXPECT_EQ(First("b /firstDirectories=x").dir, "x");
  EXPECT_EQ(First("c /firstDirect=x").dir, "");
  EXPECT_EQ(Line("d /secondDirectories=x", true, EngineList::kSecond).dir, "x");
  EXPECT_EQ(Line("e /secondDirect=x", true, EngineList::kSecond).dir, "");
}

TEST_F(WinboardImport, AnOptionThatLacksItsValueLeavesItEmpty) {
  EXPECT_EQ(First("a /fd").dir, "");
  EXPECT_EQ(First("b /name=\"\"").name, "b");
}

TEST_F(WinboardImport, AQuotedWordIsNoOption) {
  const PlayerTexts& texts = First("a \"/fd\" x /y");
  EXPECT_EQ(texts.init_string, "\"/fd\" x");
  EXPECT_EQ(texts.dir, "");
  EXPECT_EQ(texts.white_options, "/y");
}

TEST_F(WinboardImport, APathThatBeginsWithASlashIsAProgram) {
  const PlayerTexts& texts = First("/usr/games/crafty /usr/x");
  EXPECT_EQ(texts.program_exe, "/usr/games/crafty");
  EXPECT_EQ(texts.name, "crafty");
  EXPECT_EQ(texts.white_options, "/usr/x");
}

TEST_F(WinboardImport, ALineWithoutAProgramAddsNobody) {
  for (const std::string line : {"", "\n", " \t ", "/fd=x", "/name=Nobody /fd=x", "\"\"", "==;;"}) {
    First(line);
    EXPECT_EQ(database_.Players().size(), 0U) << line;
  }
}

TEST_F(WinboardImport, AnOpenQuoteIsClosedByTheEndOfTheLine) {
  const PlayerTexts& texts = First("\"my engine.exe\n");
  EXPECT_EQ(texts.program_exe, "my engine.exe");
  EXPECT_EQ(texts.name, "my engine");
}

TEST_F(WinboardImport, OnlyTheSingleQuoteQuotesOutsideBraces) {
  const PlayerTexts& texts = Line("\"a b\" 'c d'", false, EngineList::kFirst);
  EXPECT_EQ(texts.program_exe, "\"a");
  EXPECT_EQ(texts.init_string, "b\" 'c d'");
}

TEST_F(WinboardImport, AProgramWithoutANameOfItsOwnIsCalledPlayerName) {
  EXPECT_EQ(First("c:\\x\\.exe").name, "PlayerName");
}

}  // namespace
}  // namespace tarvendo
