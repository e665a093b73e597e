#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "play/local_host.h"
#include "runner/play_loop.h"
#include "runner/small_tourney.h"
#include "runner/spool.h"
#include "tourney/runner_switch_commands.h"

namespace tarvendo {

using std::chrono::seconds;

inline constexpr const char* kHeader = "one\ntwo\nthree\nfour\nfive\n";
inline constexpr const char* kBlackMates = "GameEnds(27, Black mates, 6)\n";

inline std::string Stars(std::size_t count) {
  return std::string(count, '*');
}

inline std::string AccessMessage(const std::string& file) {
  return "\n" + Stars(52) + "\nSomething is accessing '" + file +
         "',\ncan't run a game before it's free.\n" + Stars(52) + "\n> ";
}

/// Two spooled games and a runner that is switched on. Time passes when the test says so; WinBoard
/// begins its debug file as soon as it is started.
class PlayGames : public ::testing::Test, protected SmallTourney {
 protected:
  static constexpr long long kNever = -1;

  PlayGames() {
    AddGames(2);
    SpoolAll(tourney, machine.files);
    tourney.ChangeSwitch()->SetRunning(true);
    machine.processes.on_batch = [this](const std::string&) {
      machine.files.Put("/t/winboard.debug", kHeader);
      return true;
    };
    Restart();
    machine.TakeOutput();
  }

  /// Another process of the program takes the place of the one before, with the tourney as it is.
  void Restart(int places = 1) {
    loop_.reset();
    local_host_.reset();
    while (!running.IsEmpty())
      running.Remove(GameOrder(running.Orders().front()));
    local_host_ = std::make_unique<LocalHost>(machine.host, game_pace_, places, [] {});
    loop_ = std::make_unique<PlayLoop>(room, *local_host_, play_pace_, openings_);
  }

  /// One pass. Returns the milliseconds until the next one is due.
  long long Pass() {
    const auto next = loop_->Pass();
    return next ? (*next - machine.clock.Steady()).count() : kNever;
  }

  /// Passes whenever one is due, until `span` has passed. Returns how many.
  int PassTime(std::chrono::milliseconds span) {
    const TimePoint end = machine.clock.Steady() + span;
    int passes = 0;
    while (true) {
      const auto next = loop_->Pass();
      ++passes;
      if (!next || *next > end || passes > 100000) break;
      EXPECT_GT(*next, machine.clock.Steady()) << "a pass that asks for another at once";
      machine.clock.Advance(*next - machine.clock.Steady());
    }
    machine.clock.Advance(end - machine.clock.Steady());
    loop_->Pass();
    return passes;
  }

  /// Game 1 is being played.
  void PlayFirstGame() {
    Pass();
    machine.TakeOutput();
  }

  void EndGame(int number, const std::string& result) {
    PutPgn(number, result);
    WriteDebug(kBlackMates);
  }

  void WriteDebug(const std::string& text) {
    machine.files.PutMore("/t/winboard.debug", text);
    machine.watches.Notify("/t/winboard.debug");
  }

  std::string Output() { return machine.TakeOutput(); }
  bool Printed(const std::string& text) { return Output().find(text) != std::string::npos; }

  Pace game_pace_;
  PlayPace play_pace_;
  std::optional<Openings> openings_;  ///< of the next process
  std::unique_ptr<LocalHost> local_host_;
  std::unique_ptr<PlayLoop> loop_;
};

}  // namespace tarvendo
