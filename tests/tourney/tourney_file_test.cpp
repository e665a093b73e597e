#include <array>
#include <cstdio>

#include "base/text.h"
#include "tourney/content_text.h"
#include "tourney/game_list.h"
#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

constexpr const char* kSavedSettings =
    "TOURNEY_FILE\n"
    "pics/\n"                 // PicsDir
    "t.ini\n"                 // SaveFile
    "1\n"                     // AutoSave
    "7\n"                     // AutoRun
    "1\n"                     // GamesState
    "2\n"                     // SaveDebugFiles
    "1\n"                     // Ponder
    "3\n"                     // Round
    "11\n"                    // Rounds
    "2\n"                     // LastGameNumber
    "2\n"                     // SubRounds
    "0\n"                     // Type
    "10000000000\n"           // start time
    "20000000000\n"           // stop time
    "1\n"                     // running
    "games\\\n"               // FilesPath
    "Cup 100%s\n"             // Name
    "reports\\\n"             // ReportPath
    "all.pgn\n"               // PgnFile
    "/wopt\n"                 // WhiteOptions
    "/bopt \"x y\"\n"         // BlackOptions
    "c:\\wb\\winboard.exe\n"  // WinboardPath
    "64 MB\n"                 // HashTables
    "none; but 'quoted'\n"    // Tablebases
    "40\n"                    // Mps
    "330\n"                   // Seconds
    "5\n";                    // Inc

constexpr const char* kSavedLists =
    "2\n"  // participants
    // flag, Buchholz, colour state, games played, number, points, rank, Sonneborn-Berger
    "1\n2\n9\n1\n1\n2\n1\n4\n"
    // BlackOptions, Dir, Group, InitString, Name, ProgramExe, WhiteOptions; the indices of the
    // games
    "/b1\nd1\ng1\ni1\nAlpha\na.exe\n/w1\n"
    "2\n0\n1\n"
    "1\n2\n8\n1\n2\n2\n1\n4\n"
    "\n\n\n\nBeta\nBeta.exe\n\n"
    "2\n0\n1\n"
    "2\n"  // games
    // Black, Number, Result, Round, SpoolIndex, Status, SubRound, White
    "2\n1\n8\n1\n0\n4\n1\n1\n"
    "\nBeta\n\nAlpha\n"
    "1\n2\n1\n2\n6\n2\n2\n2\n"
    "games\\g2.BAT\nAlpha\ngames\\g2.PGN\nBeta\n";

std::string SavedText() {
  return std::string(kSavedSettings) + kSavedLists;
}

class TourneyFileTest : public TourneyTest {
 protected:
  /// Makes the tourney that kSavedSettings and kSavedLists tell of.
  void SetEverything() {
    Enter({"Alpha", "Beta"});
    SetSettings();
    SetPlayers();
    Add(1, 2, 1, 1);
    Add(2, 1, 2, 2);
    tourney.ChangeGames()[0].status = kReady;
    tourney.ChangeGames()[0].result = kDraw;
    Game& spooled = tourney.ChangeGames()[1];
    spooled.status = kSpooled;
    spooled.spool_index = 6;
    spooled.bat_file = "games\\g2.BAT";
    spooled.pgn_file = "games\\g2.PGN";
    tourney.Change(*tourney.FindParticipant(1))->colour_state = kMediumWhite;
    tourney.Change(*tourney.FindParticipant(2))->colour_state = kMediumBlack;
  }

  void SetSettings() {
    const auto edit = tourney.ChangeSettings();
    TourneySettings& settings = *edit;
    settings.pics_dir = "pics/";
    settings.auto_save = 5;
    settings.auto_run = 7;
    settings.save_debug_files = kSaveAutomatically;
    settings.ponder = 1;
    settings.rounds = 11;
    settings.sub_rounds = 2;
    settings.files_path = "games\\";
    settings.name = "Cup 100%s";
    settings.report_path = "reports\\";
    settings.pgn_file = "all.pgn";
    settings.white_options = "/wopt";
    settings.black_options = "/bopt \"x y\"";
    settings.winboard_path = "c:\\wb\\winboard.exe";
    settings.hash_tables = "64 MB";
    settings.tablebases = "none; but 'quoted'";
    settings.time_control = {330, 5, 40};
    tourney.ChangeState()->round = 3;
    tourney.ChangeSwitch()->Set({10000000000, 20000000000, 1});
  }

  void SetPlayers() {
    tourney.Change(*tourney.FindParticipant(1))->texts = {"Alpha", "d1",    "i1", "/w1",
                                                          "/b1",   "a.exe", "g1"};
    for (Player& player : tourney.ChangeParticipants()) {
      player.points = 2;
      player.buchholz = 2;
      player.sonneborn_berger = 4;
      player.games_played = 1;
      player.rank = 1;
    }
  }

  bool LoadText(const std::string& text) {
    machine.files.Put("t.ini", text);
    return file.Load(tourney, "t.ini");
  }

  /// The saved settings with two lists in place of the saved ones.
  bool LoadLists(const std::string& lists) { return LoadText(kSavedSettings + lists); }
};

TEST_F(TourneyFileTest, EveryValueIsWrittenInItsPlace) {
  SetEverything();
  EXPECT_TRUE(file.Save(tourney, "t.ini"));
  EXPECT_EQ(machine.files.Bytes("t.ini"), SavedText());
  EXPECT_EQ(Output(), "");
}

TEST_F(TourneyFileTest, ALoadedTourneyIsSavedAsTheSameBytes) {
  EXPECT_TRUE(LoadText(SavedText()));
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(tourney.Settings().name, "Cup 100%s");
  EXPECT_EQ(file.Name(), "t.ini");
  EXPECT_EQ(tourney.Participants().at(0).texts.init_string, "i1");
  EXPECT_EQ(tourney.Games().at(1).bat_file, "games\\g2.BAT");
  EXPECT_TRUE(file.Save(tourney, "t.ini"));
  EXPECT_EQ(machine.files.Bytes("t.ini"), SavedText());
}

TEST_F(TourneyFileTest, AfterALoadOfAnEmergencySaveTheTourneyGoesToItsOwnFile) {
  for (const std::string name : {"emergency.ini", "/home\\emergency.old.ini"}) {
    machine.files.Put(name, SavedText());
    machine.TakeOutput();
    ASSERT_TRUE(file.Load(tourney, name));
    EXPECT_EQ(machine.TakeOutput(), "From now on the tourney is saved to 't.ini'.\n");
    ASSERT_TRUE(file.AutoSave(tourney));
    EXPECT_EQ(machine.files.Bytes("t.ini"), SavedText());
  }
}

TEST_F(TourneyFileTest, AfterALoadOfAnEmergencySaveWithoutANameItGoesToFilesPath) {
  std::string text = SavedText();
  text.replace(text.find("t.ini\n"), 5, "");
  machine.files.Put("emergency.ini", text);
  machine.files.PutDirectory("games");
  ASSERT_TRUE(file.Load(tourney, "emergency.ini"));
  EXPECT_EQ(machine.TakeOutput(), "From now on the tourney is saved to 'games\\tourney.ini'.\n");
  EXPECT_EQ(file.Name(), "games\\tourney.ini");
}

TEST_F(TourneyFileTest, ALoadOfAnyOtherFileSaysNothingOfItsName) {
  EXPECT_TRUE(LoadText(SavedText()));
  machine.files.Put("copy.ini", SavedText());
  EXPECT_TRUE(file.Load(tourney, "copy.ini"));
  EXPECT_EQ(machine.TakeOutput(), "");
}

TEST_F(TourneyFileTest, ASaveBesideChangesNothingThatTheFileKnows) {
  EXPECT_TRUE(LoadText(SavedText()));
  EXPECT_TRUE(file.SaveBeside(tourney, "/home", "/home/emergency.ini"));
  EXPECT_EQ(machine.files.Bytes("emergency.ini"), SavedText());
  EXPECT_EQ(file.Name(), "t.ini");
  EXPECT_TRUE(file.SaveBeside(tourney, "/", "/emergency.ini"));
  EXPECT_TRUE(
      machine.files.Bytes("/emergency.ini").starts_with("TOURNEY_FILE\npics/\n/home/t.ini\n"));
}

TEST_F(TourneyFileTest, LoadingTwiceDoesNotPileUp) {
  EXPECT_TRUE(LoadText(SavedText()));
  EXPECT_TRUE(LoadText(SavedText()));
  EXPECT_EQ(tourney.Participants().size(), 2U);
  EXPECT_EQ(tourney.Games().size(), 2U);
  EXPECT_EQ(History(1), (std::vector<int>{0, 1}));
}

TEST_F(TourneyFileTest, AFileWithCrLfIsReadAsWell) {
  std::string text;
  for (const char c : SavedText())
    text += c == '\n' ? std::string("\r\n") : std::string(1, c);
  EXPECT_TRUE(LoadText(text));
  EXPECT_TRUE(file.Save(tourney, "t.ini"));
  EXPECT_EQ(machine.files.Bytes("t.ini"), SavedText());
}

TEST_F(TourneyFileTest, ASavedTourneyNumbersItsGamesOn) {
  EXPECT_TRUE(LoadText(SavedText()));
  RemoveGames(tourney, machine.files, {.all = true});
  EXPECT_EQ(Add(1, 2).number, 3);
}

TEST_F(TourneyFileTest, SpoolCounterAndNameWidthAreNotInTheFile) {
  tourney.spool_counter = 5;
  tourney.name_width = 7;
  EXPECT_TRUE(LoadText(SavedText()));
  EXPECT_EQ(tourney.spool_counter, 5);
  EXPECT_EQ(tourney.name_width, 7);
}

TEST_F(TourneyFileTest, ASaveWithANameKeepsTheName) {
  EXPECT_TRUE(file.Save(tourney, "mine.ini"));
  EXPECT_EQ(file.Name(), "mine.ini");
  tourney.ChangeSettings()->name = "Changed";
  EXPECT_TRUE(file.Save(tourney, ""));
  EXPECT_EQ(machine.files.FileNames(), std::vector<std::string>{"/home/mine.ini"});
  EXPECT_NE(machine.files.Bytes("mine.ini").find("\nChanged\n"), std::string::npos);
}

TEST_F(TourneyFileTest, ASaveWithoutAnyNameGoesDirectlyBehindFilesPath) {
  EXPECT_TRUE(file.Save(tourney, ""));
  EXPECT_EQ(file.Name(), "tourney.ini");
  file.SetName("");
  tourney.ChangeSettings()->files_path = "games";
  EXPECT_TRUE(file.Save(tourney, ""));
  EXPECT_EQ(file.Name(), "gamestourney.ini");
  file.SetName("");
  tourney.ChangeSettings()->files_path = "games\\";
  machine.files.MakeDirectory("games");
  EXPECT_TRUE(file.Save(tourney, ""));
  EXPECT_EQ(machine.files.FileNames(),
            (std::vector<std::string>{"/home/games/tourney.ini", "/home/gamestourney.ini",
                                      "/home/tourney.ini"}));
}

TEST_F(TourneyFileTest, ASaveWithoutNameNeverReplacesAForeignFile) {
  for (const char* foreign : {"shopping list\n", "TOURNEY_FILES\n", "\n", "tourney_file\n"}) {
    machine.files.Put("tourney.ini", foreign);
    file.SetName("");
    EXPECT_FALSE(file.Save(tourney, ""));
    EXPECT_EQ(machine.files.Bytes("tourney.ini"), foreign);
  }
  EXPECT_TRUE(file.Save(tourney, "tourney.ini"));
}

TEST_F(TourneyFileTest, ASaveWithoutNameReplacesAnEmptyFileAndATourneyFile) {
  for (const char* mine : {"", "TOURNEY_FILE\n", "TOURNEY_FILE"}) {
    machine.files.Put("tourney.ini", mine);
    file.SetName("");
    EXPECT_TRUE(file.Save(tourney, ""));
    EXPECT_EQ(machine.files.Bytes("tourney.ini").substr(0, 13), "TOURNEY_FILE\n");
  }
}

TEST_F(TourneyFileTest, ASaveThatCannotBeMadeIsAFailureWithoutMessage) {
  EXPECT_FALSE(file.Save(tourney, "nowhere\\t.ini"));
  EXPECT_EQ(file.Name(), "nowhere\\t.ini");
  EXPECT_EQ(Output(), "");
}

TEST_F(TourneyFileTest, AFileThatCannotBeOpenedChangesNothingButTheName) {
  SetEverything();
  const std::string before = ContentText(tourney);
  EXPECT_FALSE(file.Load(tourney, "missing.ini"));
  EXPECT_EQ(ContentText(tourney), before);
  EXPECT_EQ(file.Name(), "missing.ini");
  EXPECT_EQ(Output(), "");
}

TEST_F(TourneyFileTest, ALoadWithoutNameChoosesAsASaveDoes) {
  EXPECT_FALSE(file.Load(tourney, ""));
  EXPECT_EQ(file.Name(), "tourney.ini");
  machine.files.Put("tourney.ini", SavedText());
  EXPECT_TRUE(file.Load(tourney, ""));
  // The name in the file takes over.
  EXPECT_EQ(file.Name(), "t.ini");
}

TEST_F(TourneyFileTest, AForeignFileIsSaidToBeNoneAndChangesNothing) {
  SetEverything();
  const std::string before = ContentText(tourney);
  for (const std::string foreign :
       {"", "\n", "tourney_file\n", "TOURNEY_FILE", "TOURNEY_FILE \n", "PLAYER_FILE\nPLAYER\n"}) {
    EXPECT_FALSE(LoadText(foreign));
    EXPECT_EQ(Output(), "Not a tourney file.\n");
    EXPECT_EQ(ContentText(tourney), before);
  }
}

TEST_F(TourneyFileTest, FlagsAreWrittenBackAsTheyWereButForAutoSave) {
  std::string text = SavedText();
  text.replace(text.find("t.ini\n1\n7\n"), 10, "t.ini\n-4\n-7\n");
  EXPECT_TRUE(LoadText(text));
  EXPECT_EQ(tourney.Settings().auto_save, 1);
  EXPECT_EQ(tourney.Settings().auto_run, -7);
}

TEST_F(TourneyFileTest, NegativeCountsAreNone) {
  EXPECT_TRUE(LoadLists("-1\n-2000000000\n"));
  EXPECT_TRUE(tourney.Participants().empty());
  EXPECT_TRUE(tourney.Games().empty());
}

TEST_F(TourneyFileTest, CountsThatAreNoNumbersAreNone) {
  EXPECT_TRUE(LoadLists("many\nmore\n"));
  EXPECT_TRUE(tourney.Participants().empty());
  EXPECT_TRUE(tourney.Games().empty());
}

TEST_F(TourneyFileTest, RecordsBehindTheEndAreEmptyNewOnes) {
  EXPECT_TRUE(LoadLists("0\n2\n5\n9\n"));
  ASSERT_EQ(tourney.Games().size(), 2U);
  EXPECT_EQ(tourney.Games()[0].black, 5);
  EXPECT_EQ(tourney.Games()[0].number, 9);
  for (const Game& game : tourney.Games()) {
    EXPECT_EQ(game.status, kNothingDone);
    EXPECT_EQ(game.result, kUnknown);
    EXPECT_EQ(game.white_player + game.black_player + game.bat_file + game.pgn_file, "");
  }
  EXPECT_EQ(tourney.Games()[1].number, 0);
}

TEST_F(TourneyFileTest, ParticipantsBehindTheEndAreEmptyNewOnes) {
  EXPECT_TRUE(LoadLists("3\n"));
  ASSERT_EQ(tourney.Participants().size(), 3U);
  for (const Player& player : tourney.Participants()) {
    EXPECT_EQ(player.texts.name, "");
    EXPECT_EQ(player.number, 0);
    EXPECT_EQ(player.colour_state, 2);
    EXPECT_TRUE(player.games.empty());
  }
  EXPECT_TRUE(tourney.Games().empty());
}

TEST_F(TourneyFileTest, HugeCountsStopAfter10000EmptyRecords) {
  EXPECT_TRUE(LoadLists("2147483647\n"));
  EXPECT_EQ(tourney.Participants().size(), 10000U);
  EXPECT_TRUE(LoadLists("0\n99999999999\n"));
  EXPECT_EQ(tourney.Games().size(), 10000U);
}

TEST_F(TourneyFileTest, AHugeCountOfPositionsGivesThoseThatAreThere) {
  EXPECT_TRUE(LoadLists("1\n1\n0\n2\n0\n1\n0\n1\n0\n\n\n\n\nA\na\n\n2147483647\n4\n5\n"));
  EXPECT_EQ(History(1), (std::vector<int>{4, 5}));
}

TEST_F(TourneyFileTest, PositionsThatNoGameHasDoNoHarm) {
  EXPECT_TRUE(LoadLists("1\n1\n0\n2\n0\n1\n0\n1\n0\n\n\n\n\nA\na\n\n3\n-1\n77\nx\n0\n"));
  const Player& player = tourney.Participants().front();
  const std::string shown = ParticipantText(tourney, player);
  tourney.Change(player)->games.clear();
  EXPECT_EQ(shown, ParticipantText(tourney, player));
  EXPECT_TRUE(RemoveParticipant(tourney, machine.files, 1));
}

TEST_F(TourneyFileTest, ATextOf254BytesSurvivesAndALongerOneIsCutWhichIsSaidOnce) {
  for (const std::size_t size : {253U, 254U}) {
    tourney.ChangeSettings()->name = std::string(size, 'n');
    EXPECT_TRUE(file.Save(tourney, "t.ini"));
    EXPECT_TRUE(file.Load(tourney, "t.ini"));
    EXPECT_EQ(tourney.Settings().name.size(), size);
    EXPECT_EQ(tourney.Settings().pgn_file, "default.pgn");
  }
  EXPECT_EQ(Output(), "");
  for (const std::size_t size : {255U, 256U, 1000U}) {
    tourney.ChangeSettings()->name = std::string(size, 'n');
    EXPECT_TRUE(file.Save(tourney, "t.ini"));
    EXPECT_EQ(Output(), "In the tourney file a text of " + std::to_string(size) +
                            " bytes is cut to 254: '" + std::string(60, 'n') + "...'\n");
    EXPECT_TRUE(file.Save(tourney, "t.ini"));
    EXPECT_EQ(Output(), "");
    EXPECT_TRUE(file.Load(tourney, "t.ini"));
    EXPECT_EQ(tourney.Settings().name, std::string(254, 'n'));
    EXPECT_EQ(tourney.Settings().pgn_file, "default.pgn");
  }
}

TEST_F(TourneyFileTest, ATextWithALineFeedMovesEverythingBehindIt) {
  tourney.ChangeSettings()->name = "two\nlines";
  EXPECT_TRUE(file.Save(tourney, "t.ini"));
  EXPECT_TRUE(file.Load(tourney, "t.ini"));
  EXPECT_EQ(tourney.Settings().name, "two");
  EXPECT_EQ(tourney.Settings().report_path, "lines");
}

TEST_F(TourneyFileTest, NulBytesAnywhereDoNoHarm) {
  const std::string whole = SavedText();
  for (std::size_t i = 0; i < whole.size(); ++i) {
    std::string text = whole;
    text[i] = '\0';
    const bool loaded = LoadText(text);
    EXPECT_EQ(loaded, i > 12) << i;
    EXPECT_TRUE(file.Save(tourney, "t.ini"));
    Output();
  }
}

/// What the reader is expected to make of a cut file, in the most literal way.
class CutFile {
 public:
  explicit CutFile(const std::string& text) {
    std::size_t begin = 0;
    while (begin < text.size()) {
      const std::size_t end = std::min(text.find('\n', begin), text.size() - 1) + 1;
      lines_.push_back(text.substr(begin, end - begin));
      begin = end;
    }
  }

  std::string Text(std::size_t line, const std::string& former) const {
    if (line > lines_.size()) return former;
    return lines_[line - 1].substr(0, lines_[line - 1].size() - 1);
  }

  long long Number(std::size_t line, long long former) const {
    long long value = former;
    if (line <= lines_.size()) std::sscanf(lines_[line - 1].c_str(), "%lld", &value);
    return value;
  }

 private:
  std::vector<std::string> lines_;
};

struct TextLine {
  std::size_t line;
  std::string TourneySettings::*field;
};

constexpr std::array<TextLine, 10> kTextLines = {{{2, &TourneySettings::pics_dir},
                                                  {17, &TourneySettings::files_path},
                                                  {18, &TourneySettings::name},
                                                  {19, &TourneySettings::report_path},
                                                  {20, &TourneySettings::pgn_file},
                                                  {21, &TourneySettings::white_options},
                                                  {22, &TourneySettings::black_options},
                                                  {23, &TourneySettings::winboard_path},
                                                  {24, &TourneySettings::hash_tables},
                                                  {25, &TourneySettings::tablebases}}};

/// The numbers of lines 4 to 16 and 26 to 28 of a tourney.
std::vector<long long> Numbers(const Tourney& tourney) {
  const TourneySettings& s = tourney.Settings();
  const RunnerSwitch::State& runner = tourney.Switch().Get();
  return {s.auto_save,
          s.auto_run,
          tourney.State().games_state,
          s.save_debug_files,
          s.ponder,
          tourney.State().round,
          s.rounds,
          tourney.State().last_game_number,
          s.sub_rounds,
          s.type,
          runner.start_time,
          runner.stop_time,
          runner.running,
          s.time_control.mps,
          s.time_control.seconds,
          s.time_control.inc};
}

class CutTourneyFile : public TourneyFileTest {
 protected:
  /// Values that are nowhere in the saved file.
  void SetFormerValues(Tourney& fresh) {
    const auto edit = fresh.ChangeSettings();
    TourneySettings& settings = *edit;
    for (const TextLine& entry : kTextLines)
      settings.*(entry.field) = "former";
    settings.auto_run = settings.save_debug_files = settings.ponder = 50;
    settings.rounds = settings.sub_rounds = settings.type = 51;
    settings.time_control = {53, 54, 55};
    const auto state = fresh.ChangeState();
    state->games_state = state->round = state->last_game_number = 52;
    fresh.ChangeSwitch()->Set({56, 57, 58});
  }

  void ExpectSettings(const Tourney& loaded, const std::vector<long long>& former,
                      const CutFile& cut) {
    for (const TextLine& entry : kTextLines) {
      EXPECT_EQ(loaded.Settings().*(entry.field), cut.Text(entry.line, "former")) << entry.line;
    }
    const std::vector<long long> numbers = Numbers(loaded);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      const std::size_t line = i < 13 ? i + 4 : i + 13;
      EXPECT_EQ(numbers[i], cut.Number(line, former[i])) << line;
    }
  }
};

TEST_F(CutTourneyFile, FieldsBehindTheCutKeepTheirFormerValuesWhereverItIs) {
  const std::string whole = SavedText();
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    SCOPED_TRACE(size);
    machine.files.Put("t.ini", whole.substr(0, size));
    Tourney fresh;
    TourneyFile fresh_file(machine.files);
    SetFormerValues(fresh);
    const std::vector<long long> former = Numbers(fresh);
    const bool expected = size >= 13;
    EXPECT_EQ(fresh_file.Load(fresh, "t.ini"), expected);
    EXPECT_EQ(Output(), expected ? "" : "Not a tourney file.\n");
    const CutFile cut(expected ? whole.substr(0, size) : "");
    ExpectSettings(fresh, former, cut);
    EXPECT_EQ(fresh_file.Name(), cut.Text(3, "t.ini"));
  }
}

TEST_F(CutTourneyFile, TheListsHoldAsManyRecordsAsTheirCountsSay) {
  const std::string whole = SavedText();
  const std::size_t participants_count = std::string(kSavedSettings).size();
  const std::size_t games_count = whole.find("2\n2\n1\n8\n");
  for (std::size_t size = 13; size <= whole.size(); ++size) {
    SCOPED_TRACE(size);
    Tourney fresh;
    TourneyFile fresh_file(machine.files);
    machine.files.Put("t.ini", whole.substr(0, size));
    EXPECT_TRUE(fresh_file.Load(fresh, "t.ini"));
    EXPECT_EQ(fresh.Participants().size(), size > participants_count ? 2U : 0U);
    EXPECT_EQ(fresh.Games().size(), size > games_count ? 2U : 0U);
  }
}

TEST_F(CutTourneyFile, WhatWasLoadedCanBeSavedAndLoadedAgain) {
  const std::string whole = SavedText();
  for (std::size_t size = 13; size <= whole.size(); ++size) {
    SCOPED_TRACE(size);
    Tourney fresh;
    TourneyFile fresh_file(machine.files);
    machine.files.Put("t.ini", whole.substr(0, size));
    EXPECT_TRUE(fresh_file.Load(fresh, "t.ini"));
    EXPECT_TRUE(fresh_file.Save(fresh, "again.ini"));
    const std::string content = ContentText(fresh);
    Tourney again;
    TourneyFile again_file(machine.files);
    EXPECT_TRUE(again_file.Load(again, "again.ini"));
    EXPECT_EQ(ContentText(again), content);
  }
}

TEST_F(CutTourneyFile, WorkGoesOnWithWhatWasLoaded) {
  const std::string whole = SavedText();
  for (std::size_t size = 13; size <= whole.size(); ++size) {
    Tourney fresh;
    TourneyFile fresh_file(machine.files);
    machine.files.Put("t.ini", whole.substr(0, size));
    EXPECT_TRUE(fresh_file.Load(fresh, "t.ini"));
    ShowParticipants(fresh, 0);
    ListGames(fresh, {});
    fresh.AddGame(1, 2, 1, 1);
    RemoveParticipant(fresh, machine.files, 1);
    RemoveGames(fresh, machine.files, {.all = true});
    EXPECT_TRUE(fresh.Games().empty()) << size;
  }
}

class SaveFaults : public TourneyFileTest, public testing::WithParamInterface<FileOperation> {};

TEST_P(SaveFaults, ASaveThatFailsAnywhereLeavesTheOldFileWhole) {
  EXPECT_TRUE(file.Save(tourney, "t.ini"));
  const std::string old = machine.files.Bytes("t.ini");
  SetEverything();
  const int operations_before = machine.files.Count(GetParam());
  int n = 0;
  bool saved = false;
  while (!saved) {
    machine.files.FailAt(GetParam(), ++n);
    saved = file.Save(tourney, "t.ini");
    EXPECT_EQ(machine.files.Bytes("t.ini"), saved ? SavedText() : old) << n;
    EXPECT_EQ(machine.files.FileNames(), std::vector<std::string>{"/home/t.ini"}) << n;
  }
  EXPECT_GT(n, 1);
  EXPECT_GE(machine.files.Count(GetParam()) - operations_before, n);
}

INSTANTIATE_TEST_SUITE_P(EveryOperation, SaveFaults,
                         testing::Values(FileOperation::kWrite, FileOperation::kClose,
                                         FileOperation::kRename));

TEST_F(TourneyFileTest, AFileThatHoldsMoreThanATourneyCanIsRefused) {
  ASSERT_TRUE(LoadText(SavedText()));
  const std::string before = ContentText(tourney);
  const std::string player = std::string(8 + 7, '\n');
  const auto most = static_cast<int>(kMostInHistories);
  machine.files.Put("big.ini", kSavedSettings + std::string("1\n") + player +
                                   std::to_string(most + 1) + "\n" +
                                   std::string(kMostInHistories + 1, '\n'));
  EXPECT_FALSE(file.Load(tourney, "big.ini"));
  EXPECT_EQ(Output(),
            "The file '/home/big.ini' holds more than a tourney can, so it is not read.\n");
  EXPECT_EQ(ContentText(tourney), before);
  EXPECT_EQ(file.Name(), "t.ini") << "nobody saves over it";
}

}  // namespace
}  // namespace tarvendo
