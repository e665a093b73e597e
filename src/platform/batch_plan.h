#pragma once

#include <string>
#include <vector>

namespace tarvendo {

/// One command of a batch file: what must hold before it is done, and what is done.
struct BatchStep {
  struct Condition {
    bool must_exist;   ///< `if exist` or `if not exist`
    std::string path;  ///< in the form it was written
  };
  std::vector<Condition> conditions;  ///< from the outermost `if` to the innermost
  bool is_delete = false;             ///< `del PATH`: words holds the path alone
  std::vector<std::string> words;     ///< the program and its arguments; never empty
};

/// Reads the small language of the game batch files, for hosts without a batch processor: a leading
/// `@`, `rem`, `if [not] exist PATH COMMAND`, `del PATH`, and a program with its words; keywords in
/// any case. Words end at blanks; "..." and '...' hold blanks together and are taken off, either
/// kind standing literally inside the other; nothing else is special, so no text can become a
/// command. Lines that are empty or remarks give no step; an `if` or `del` without its path gives
/// none either.
///
///     @if NOT EXIST g7.PGN winboard.exe /scp='beta.exe xboard'
/// gives one step with the condition {false, "g7.PGN"} and the words `winboard.exe`,
/// `/scp=beta.exe xboard`.
std::vector<BatchStep> ParseBatch(const std::string& text);

}  // namespace tarvendo
