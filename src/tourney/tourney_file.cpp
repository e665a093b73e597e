// The tourney file: one value a line, in a fixed order, behind the header line. docs/files.md has
// the layout.

#include "base/line_reader.h"
#include "base/log.h"
#include "platform/files.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr const char* kHeader = "TOURNEY_FILE";

/// A count in a damaged file may be anything; so many records are made of nothing before it is
/// given up.
constexpr int kMostEmptyRecords = 10000;

/// A record without any text, to be read into.
Game BlankGame() {
  Game game;
  game.black_player.clear();
  game.white_player.clear();
  return game;
}

}  // namespace

bool Tourney::WouldReplaceForeignFile(const std::string& path) {
  const auto text = host_.files.ReadText(path);
  if (!text || text->empty()) return false;
  return WithoutLineFeed(LineReader(*text).Read(kRecordLine).value_or("")) != kHeader;
}

bool Tourney::Save(const std::string& name) {
  if (!name.empty()) settings.save_file = name;
  if (settings.save_file.empty()) settings.save_file = settings.files_path + "tourney.ini";
  if (name.empty() && WouldReplaceForeignFile(settings.save_file)) return false;
  if (!OpenWrite(host_.files, settings.save_file)) return false;
  WriteSettings(true);
  WriteContent();
  return Close();
}

std::string Tourney::ContentText() {
  OpenText();
  WriteSettings(false);
  WriteContent();
  return TakeText();
}

void Tourney::WriteSettings(bool with_save_file) {
  const RunnerSwitch::State runner = switch_.Get();
  WriteString(kHeader);
  WriteString(settings.pics_dir);
  if (with_save_file) WriteString(settings.save_file);
  WriteInt(settings.auto_save != 0 ? 1 : 0);
  for (const int value :
       {settings.auto_run, games_state, settings.save_debug_files, settings.ponder, round,
        settings.rounds, last_game_number, settings.sub_rounds, settings.type}) {
    WriteInt(value);
  }
  WriteInt(runner.start_time);
  WriteInt(runner.stop_time);
  WriteInt(runner.running);
  for (const std::string* text :
       {&settings.files_path, &settings.name, &settings.report_path, &settings.pgn_file,
        &settings.white_options, &settings.black_options, &settings.winboard_path,
        &settings.hash_tables, &settings.tablebases}) {
    WriteString(*text);
  }
  const TimeControl& control = settings.time_control;
  for (const int value : {control.mps, control.seconds, control.inc})
    WriteInt(value);
}

void Tourney::WriteContent() {
  WriteInt(static_cast<long long>(participants_.size()));
  for (Player& player : participants_) {
    player.Attach(*this);
    player.WriteRecord();
    player.Detach();
  }
  WriteInt(static_cast<long long>(games_.size()));
  for (Game& game : games_) {
    game.Attach(*this);
    game.WriteRecord();
    game.Detach();
  }
}

bool Tourney::Load(const std::string& name) {
  if (!name.empty()) settings.save_file = name;
  if (settings.save_file.empty()) settings.save_file = settings.files_path + "tourney.ini";
  if (!OpenRead(host_.files, settings.save_file)) return false;
  std::string header;
  ReadString(header);
  if (header != kHeader) {
    Close();
    Print("Not a tourney file.\n");
    return false;
  }
  ReadSettings();
  ReadParticipants();
  ReadGames();
  Close();
  return true;
}

void Tourney::ReadSettings() {
  RunnerSwitch::State runner = switch_.Get();
  ReadString(settings.pics_dir);
  ReadString(settings.save_file);
  ReadInt(settings.auto_save);
  settings.auto_save = settings.auto_save != 0 ? 1 : 0;
  for (int* field :
       {&settings.auto_run, &games_state, &settings.save_debug_files, &settings.ponder, &round,
        &settings.rounds, &last_game_number, &settings.sub_rounds, &settings.type}) {
    ReadInt(*field);
  }
  ReadLong(runner.start_time);
  ReadLong(runner.stop_time);
  ReadInt(runner.running);
  switch_.Set(runner);
  for (std::string* field :
       {&settings.files_path, &settings.name, &settings.report_path, &settings.pgn_file,
        &settings.white_options, &settings.black_options, &settings.winboard_path,
        &settings.hash_tables, &settings.tablebases}) {
    ReadString(*field);
  }
  TimeControl& control = settings.time_control;
  for (int* field : {&control.mps, &control.seconds, &control.inc})
    ReadInt(*field);
}

void Tourney::ReadParticipants() {
  participants_.clear();
  int count = 0;
  ReadInt(count);
  for (int i = 0, empty = 0; i < count && empty < kMostEmptyRecords; ++i) {
    if (NothingLeft()) ++empty;
    Player player;
    player.Attach(*this);
    player.ReadRecord();
    participants_.push_back(player);
  }
}

void Tourney::ReadGames() {
  games_.clear();
  int count = 0;
  ReadInt(count);
  for (int i = 0, empty = 0; i < count && empty < kMostEmptyRecords; ++i) {
    if (NothingLeft()) ++empty;
    Game game = BlankGame();
    game.Attach(*this);
    game.ReadRecord();
    games_.push_back(game);
  }
}

}  // namespace tarvendo
