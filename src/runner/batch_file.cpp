#include "runner/batch_file.h"

#include "base/text.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

bool HoldsBlank(const std::string& text) {
  return text.find(' ') != std::string::npos;
}

std::string QuotedWhenBlank(const std::string& text) {
  return HoldsBlank(text) ? "\"" + text + "\"" : text;
}

std::string WithBlank(const std::string& options) {
  return options.empty() ? "" : options + " ";
}

/// "/tc 5", "/tc 5:30", "/tc 0:05": minutes, and the seconds when there are any.
std::string TimeOption(const TimeControl& control) {
  const std::string minutes = Format("/tc %d", control.seconds / 60);
  const int seconds = control.seconds % 60;
  return seconds == 0 ? minutes : minutes + Format(":%02d", seconds);
}

/// Moves per period switch the increment off.
std::string IncrementOption(const TimeControl& control) {
  return control.mps != 0 ? " /inc -1 " : Format(" /inc %d ", control.inc);
}

struct EngineOptions {
  const char* dir;
  const char* program;
};

std::string EngineWords(const PlayerTexts& engine, const EngineOptions& option,
                        const std::string& player_options) {
  std::string words;
  if (!engine.dir.empty()) words += option.dir + QuotedWhenBlank(engine.dir) + " ";
  const std::string program = QuotedWhenBlank(engine.program_exe);
  words += option.program;
  words += engine.init_string.empty() ? program : "'" + program + " " + engine.init_string + "'";
  return words + " " + WithBlank(player_options);
}

PlayerTexts TextsOf(const Tourney& tourney, int number) {
  const Player* player = tourney.FindParticipant(number);
  return player != nullptr ? player->texts : PlayerTexts();
}

}  // namespace

std::string GameFileName(const std::string& files_path, int game_number,
                         const std::string& extension) {
  return files_path + "g" + std::to_string(game_number) + extension;
}

std::string BatchText(const Tourney& tourney, const Game& game) {
  const TourneySettings& settings = tourney.Settings();
  const PlayerTexts white = TextsOf(tourney, game.white);
  const PlayerTexts black = TextsOf(tourney, game.black);
  const bool has_sub_round = game.sub_round != 0 && game.sub_round != 1;
  std::string text = Format("@rem Round %d", game.round);
  if (has_sub_round) text += Format("-%d", game.sub_round);
  const std::string pgn_file = QuotedWhenBlank(game.pgn_file);
  text += "\n@if NOT EXIST " + pgn_file + " ";
  text += QuotedWhenBlank(settings.winboard_path) + " ";
  text += settings.ponder != 0 ? " /ponder " : " /xponder ";
  text += "/cp /mg 1 /sgf=" + pgn_file + " ";
  text += TimeOption(settings.time_control) + IncrementOption(settings.time_control);
  text += Format("/mps %d ", settings.time_control.mps);
  text += "/clock /thinking /xlegal ";
  text += WithBlank(settings.white_options) + WithBlank(settings.black_options);
  text += EngineWords(white, {"/fd=", "/fcp="}, white.white_options);
  text += EngineWords(black, {"/sd=", "/scp="}, black.black_options);
  return text + " /debug /xexit /xpopup /autoflag ";
}

}  // namespace tarvendo
