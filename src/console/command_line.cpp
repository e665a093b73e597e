#include "console/command_line.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <variant>

#include "base/text.h"
#include "console/long_options.h"
#include "platform/processes.h"

namespace tarvendo {
namespace {

/// The number from 1 to `largest` that the text is; 0 for anything else.
int NumberUpTo(int largest, const std::string& text) {
  const int number = IsAllDigits(text) ? ToInt(text) : 0;
  return number >= 1 && number <= largest ? number : 0;
}

/// The one scheduler that is known.
constexpr const char* kSlurm = "slurm";

bool IsCluster(const std::string& word) {
  return word == "--cluster" || word.starts_with("--cluster=");
}

/// Reads the words one behind the other.
class CommandLineReader {
 public:
  explicit CommandLineReader(const std::vector<std::string>& words)
      : words_(words), has_cluster_(std::any_of(words.begin(), words.end(), IsCluster)) {}

  StartUp Read() {
    while (next_ < words_.size()) {
      const std::string& word = words_[next_++];
      if (word.starts_with("--")) {
        TakeLongOption(word);
      } else {
        others_.push_back(word);
      }
    }
    TakeOthers();
    if (!start_.wants_help && !start_.wants_version) {
      FailWhatDoesNotFit();
      FailClusterThatDoesNotFit();
    }
    return start_;
  }

 private:
  void TakeLongOption(const std::string& word) {
    const std::size_t equals = word.find('=');
    const std::string name = word.substr(0, equals);
    for (const LongOption& option : LongOptions()) {
      if (name != option.word) continue;
      std::optional<std::string> value;
      if (equals != std::string::npos) value = word.substr(equals + 1);
      std::visit([&](const auto& target) { Take(option, target, value); }, option.target);
      return;
    }
    Fail("'" + word + "' is no option of tarvendo; the nearest one is " +
         NearestLongOption(word).word + ". --help tells them all.");
  }

  void Take(const LongOption& option, bool StartUp::*flag,
            const std::optional<std::string>& value) {
    start_.*flag = true;
    if (value) Fail(std::string(option.word) + " takes no value, not '" + *value + "'.");
  }

  void Take(const LongOption& option, const NumberValue& number, std::optional<std::string> value) {
    if (!value) value = NextWord();
    const bool is_larger = has_cluster_ && number.largest_on_cluster != 0;
    const int largest = is_larger ? number.largest_on_cluster : number.largest;
    start_.*number.field = value ? NumberUpTo(largest, *value) : 0;
    if (start_.*number.field != 0) return;
    Fail(std::string(option.word) + " takes a number from 1 to " + std::to_string(largest) +
         (value ? ", not '" + *value + "'." : "."));
  }

  void Take(const LongOption& option, const TextValue& text, std::optional<std::string> value) {
    TakeText(option, text.field, std::move(value));
  }

  void Take(const LongOption& option, const PathValue& path, std::optional<std::string> value) {
    TakeText(option, path.field, std::move(value));
  }

  void TakeText(const LongOption& option, std::string StartUp::*field,
                std::optional<std::string> value) {
    if (!value) value = NextWord();
    start_.*field = value.value_or("");
    if ((start_.*field).empty())
      Fail(std::string(option.word) + " takes a value: " + option.value_name + ".");
  }

  std::optional<std::string> NextWord() {
    if (next_ == words_.size()) return std::nullopt;
    return words_[next_++];
  }

  void TakeOthers() {
    if (others_.size() == 1) {
      start_.script = others_.front();
      return;
    }
    for (const std::string& word : others_) {
      if (!word.starts_with("-")) {
        if (start_.script.empty()) start_.script = word;
      } else if (word.size() > 1 && word[1] == 'c') {
        start_.continues = true;
      }
    }
  }

  void FailClusterThatDoesNotFit() {
    if (start_.cluster.empty()) {
      if (!start_.cluster_options.empty()) Fail("--cluster-options goes with --cluster.");
    } else if (start_.cluster != kSlurm) {
      Fail("--cluster knows '" + std::string(kSlurm) + "' alone, not '" + start_.cluster + "'.");
    } else if (!KnowsSchedulers()) {
      Fail("--cluster is not known on this system.");
    } else if (start_.games == 0) {
      Fail("--cluster goes with --games: how many games are queued or played at a time.");
    }
  }

  void FailWhatDoesNotFit() {
    if (!start_.resume.empty() && !others_.empty()) {
      Fail("--resume takes no script and no keyboard, so '" + others_.front() +
           "' has no meaning beside it.");
    }
    if (start_.shows_progress && !start_.AwaitsEnd()) {
      Fail("--progress goes with --wait or --resume.");
    }
    if (start_.gives_code && !start_.AwaitsEnd()) Fail("--exit-code goes with --wait.");
  }

  void Fail(const std::string& why) {
    if (start_.error.empty()) start_.error = why;
  }

  const std::vector<std::string>& words_;
  bool has_cluster_;  ///< somewhere among the words
  std::size_t next_ = 0;
  std::vector<std::string> others_;  ///< the words that are neither long options nor their values
  StartUp start_;
};

}  // namespace

StartUp ReadCommandLine(const std::vector<std::string>& words) {
  return CommandLineReader(words).Read();
}

void MakePathsFull(StartUp& start, FileSystem& files) {
  for (const LongOption& option : LongOptions()) {
    const PathValue* path = std::get_if<PathValue>(&option.target);
    if (path != nullptr && !(start.*path->field).empty())
      start.*path->field = files.FullPath(start.*path->field);
  }
}

}  // namespace tarvendo
