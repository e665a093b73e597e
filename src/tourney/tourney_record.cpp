// The tourney as it stands in its file: one value a line, in a fixed order, behind the header line.
// docs/files.md has the layout.

#include <algorithm>

#include "base/record_file.h"
#include "platform/faults.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

// More than any tourney has; without a limit a damaged file fills the memory.
constexpr std::size_t kMostParticipantsRead = 1000000;
constexpr std::size_t kMostGamesRead = 4000000;

/// A record without any text, to be read into.
Game BlankGame() {
  Game game;
  game.black_player.clear();
  game.white_player.clear();
  return game;
}

/// What stands in front of the records, as it is before the file is read.
struct Front {
  TourneySettings& settings;
  TourneyState& state;
  RunnerSwitch::State& runner;
  std::string& save_file;
};

void ReadSettings(RecordReader& reader, const Front& front) {
  TourneySettings& settings = front.settings;
  TourneyState& state = front.state;
  reader.ReadString(settings.pics_dir);
  reader.ReadString(front.save_file);
  reader.ReadInt(settings.auto_save);
  settings.auto_save = settings.auto_save != 0 ? 1 : 0;
  for (int* field : {&settings.auto_run, &state.games_state, &settings.save_debug_files,
                     &settings.ponder, &state.round, &settings.rounds, &state.last_game_number,
                     &settings.sub_rounds, &settings.type}) {
    reader.ReadInt(*field);
  }
  reader.ReadLong(front.runner.start_time);
  reader.ReadLong(front.runner.stop_time);
  reader.ReadInt(front.runner.running);
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

/// Reads a list of records behind its count, and has `take` look at each. False when there are more
/// than `most`, or `take` says so.
template <typename Record, typename Take>
bool ReadList(RecordReader& reader, std::size_t most, const Record& blank, const Take& take) {
  int count = 0;
  reader.ReadInt(count);
  std::size_t read = 0;
  const auto announced = static_cast<std::size_t>(std::max(count, 0));
  for (int empty = 0; read < announced && empty < reader.MostEmptyRecords(); ++read) {
    EndWhenAsked();
    if (read == most) return false;
    if (reader.NothingLeft()) ++empty;
    Record record = blank;
    record.ReadRecord(reader);
    if (!take(std::move(record))) return false;
  }
  return true;
}

bool ReadParticipants(RecordReader& reader, std::vector<Player>& participants) {
  std::size_t in_histories = 0;
  return ReadList(reader, kMostParticipantsRead, Player(), [&](Player player) {
    in_histories += player.games.size();
    participants.push_back(std::move(player));
    return in_histories <= kMostInHistories;
  });
}

bool ReadGames(RecordReader& reader, std::vector<Game>& games) {
  return ReadList(reader, kMostGamesRead, BlankGame(), [&](Game game) {
    games.push_back(std::move(game));
    return true;
  });
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

bool Tourney::ReadRecord(RecordReader& reader, std::string& save_file) {
  // Everything is read before anything is taken over: so whoever is asked to end meanwhile, or
  // finds that it is too much, keeps the tourney of before.
  TourneySettings settings = settings_;
  TourneyState state = state_;
  RunnerSwitch::State runner = switch_.Get();
  std::string name = save_file;
  ReadSettings(reader, {settings, state, runner, name});
  std::vector<Player> participants;
  std::vector<Game> games;
  if (!ReadParticipants(reader, participants) || !ReadGames(reader, games)) return false;
  ++version_;
  settings_ = std::move(settings);
  state_ = state;
  switch_.Set(runner);
  participants_ = std::move(participants);
  games_ = std::move(games);
  index_.Forget();
  save_file = std::move(name);
  return true;
}

}  // namespace tarvendo
