#pragma once

#include <string>
#include <vector>

#include "platform/batch_plan.h"

namespace tarvendo {

/// A batch file made ready to be run in a child process. Everything that needs memory is done by
/// the constructor, since a child of a process with several threads may only make system calls.
class BatchChild {
 public:
  /// `program_directory` ends in its separator; `search_path` is a list of directories with colons.
  BatchChild(const std::vector<BatchStep>& steps, const std::string& program_directory,
             const std::string& search_path);

  /// Runs the steps one after the other and ends the process with the last one's exit code: 127
  /// when its program was not found. The last program takes the place of this process.
  [[noreturn]] void Run() const;

 private:
  struct Condition {
    bool must_exist;
    std::string path;
  };
  struct Step {
    std::vector<Condition> conditions;
    bool is_delete;
    std::vector<std::string> words;
    std::vector<std::string> places;  ///< where the program may lie, or the path to be deleted
    std::vector<char*> arguments;     ///< into words, with a null at the end
    std::string complaint;            ///< for a program that cannot be run
  };

  static Step Prepare(const BatchStep& step, const std::string& program_directory,
                      const std::string& search_path);
  static bool Holds(const std::vector<Condition>& conditions);
  static int RunStep(const Step& step, bool is_last);
  static void Become(const Step& step);

  std::vector<Step> steps_;
};

}  // namespace tarvendo
