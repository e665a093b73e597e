// The tourney as it stands in its file: one value a line, in a fixed order, behind the header line.
// docs/files.md has the layout.

#include "base/record_file.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

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

void Tourney::WriteRecord(RecordWriter& writer, const std::string& save_file) const {
  WriteSettings(writer, save_file);
  writer.WriteInt(static_cast<long long>(participants_.size()));
  for (const Player& player : participants_)
    player.WriteRecord(writer);
  writer.WriteInt(static_cast<long long>(games_.size()));
  for (const Game& game : games_)
    game.WriteRecord(writer);
}

void Tourney::WriteSettings(RecordWriter& writer, const std::string& save_file) const {
  const TourneySettings& settings = settings_;
  const RunnerSwitch::State& runner = switch_.Get();
  writer.WriteString(settings.pics_dir);
  writer.WriteString(save_file);
  writer.WriteInt(settings.auto_save != 0 ? 1 : 0);
  for (const int value : {settings.auto_run, state_.games_state, settings.save_debug_files,
                          settings.ponder, state_.round, settings.rounds, state_.last_game_number,
                          settings.sub_rounds, settings.type}) {
    writer.WriteInt(value);
  }
  writer.WriteInt(runner.start_time);
  writer.WriteInt(runner.stop_time);
  writer.WriteInt(runner.running);
  for (const std::string* text :
       {&settings.files_path, &settings.name, &settings.report_path, &settings.pgn_file,
        &settings.white_options, &settings.black_options, &settings.winboard_path,
        &settings.hash_tables, &settings.tablebases}) {
    writer.WriteString(*text);
  }
  const TimeControl& control = settings.time_control;
  for (const int value : {control.mps, control.seconds, control.inc})
    writer.WriteInt(value);
}

void Tourney::ReadRecord(RecordReader& reader, std::string& save_file) {
  ++version_;
  ReadSettings(reader, save_file);
  ReadParticipants(reader);
  ReadGames(reader);
}

void Tourney::ReadSettings(RecordReader& reader, std::string& save_file) {
  TourneySettings& settings = settings_;
  RunnerSwitch::State runner = switch_.Get();
  reader.ReadString(settings.pics_dir);
  reader.ReadString(save_file);
  reader.ReadInt(settings.auto_save);
  settings.auto_save = settings.auto_save != 0 ? 1 : 0;
  for (int* field : {&settings.auto_run, &state_.games_state, &settings.save_debug_files,
                     &settings.ponder, &state_.round, &settings.rounds, &state_.last_game_number,
                     &settings.sub_rounds, &settings.type}) {
    reader.ReadInt(*field);
  }
  reader.ReadLong(runner.start_time);
  reader.ReadLong(runner.stop_time);
  reader.ReadInt(runner.running);
  switch_.Set(runner);
  for (std::string* field :
       {&settings.files_path, &settings.name, &settings.report_path, &settings.pgn_file,
        &settings.white_options, &settings.black_options, &settings.winboard_path,
        &settings.hash_tables, &settings.tablebases}) {
    reader.ReadString(*field);
  }
  TimeControl& control = settings.time_control;
  for (int* field : {&control.mps, &control.seconds, &control.inc})
    reader.ReadInt(*field);
}

void Tourney::ReadParticipants(RecordReader& reader) {
  participants_.clear();
  int count = 0;
  reader.ReadInt(count);
  for (int i = 0, empty = 0; i < count && empty < kMostEmptyRecords; ++i) {
    if (reader.NothingLeft()) ++empty;
    Player player;
    player.ReadRecord(reader);
    participants_.push_back(std::move(player));
  }
}

void Tourney::ReadGames(RecordReader& reader) {
  games_.clear();
  int count = 0;
  reader.ReadInt(count);
  for (int i = 0, empty = 0; i < count && empty < kMostEmptyRecords; ++i) {
    if (reader.NothingLeft()) ++empty;
    Game game = BlankGame();
    game.ReadRecord(reader);
    games_.push_back(std::move(game));
  }
}

}  // namespace tarvendo
