#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "console/command_interpreter.h"
#include "console/line_input.h"
#include "platform/input.h"
#include "players/player_database.h"
#include "runner/small_tourney.h"

namespace tarvendo {

/// A text as the bytes of the keyboard or of a script.
class TextInput : public InputStream {
 public:
  explicit TextInput(std::string text) : text_(std::move(text)) {}

  int Get() override {
    return next_ < text_.size() ? static_cast<unsigned char>(text_[next_++]) : -1;
  }

 private:
  std::string text_;
  std::size_t next_ = 0;
};

/// A round robin of four participants, a database of its own (Alpha and Beta), and the interpreter
/// before them, to which a test types its lines.
class TypedCommands : public ::testing::Test, protected SmallTourney {
 protected:
  TypedCommands() {
    AddToDatabase("Alpha", "strong");
    AddToDatabase("Beta", "strong weak");
    machine.TakeOutput();
  }

  void AddToDatabase(const std::string& name, const std::string& group) {
    PlayerTexts texts;
    texts.name = name;
    texts.program_exe = name + ".exe";
    texts.group = group;
    players.CreatePlayer(texts);
  }

  /// What a script with this text prints.
  std::string TypeAll(const std::string& text) {
    machine.TakeOutput();
    TextInput bytes(text);
    LineInput input(bytes, false);
    interpreter.RunCommandLoop(input, false);
    return machine.TakeOutput();
  }

  /// What one command prints.
  std::string Type(const std::string& line) { return TypeAll(line + "\n"); }

  /// Switches AutoSave on, and sees to it that the file is not there yet.
  void UseAutoSave() {
    tourney.ChangeSettings()->auto_save = 1;
    file.SetName("/t/saved.ini");
  }

  bool HasSaved() { return machine.files.Has("/t/saved.ini"); }

  PlayerDatabase players;
  CommandInterpreter interpreter{{room, players, "/program/"}};
};

}  // namespace tarvendo
