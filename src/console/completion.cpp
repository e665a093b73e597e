#include "console/completion.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "console/command_table.h"
#include "platform/letters.h"
#include "platform/paths.h"

namespace tarvendo {
namespace {

constexpr const char* kBlanks = " \t";

/// A word of the line and where it begins.
struct TypedWord {
  std::size_t start;
  std::string text;
};

/// The words, the last of which ends where the line does: empty behind a blank.
std::vector<TypedWord> WordsOfLine(const std::string& line) {
  std::vector<TypedWord> words;
  std::size_t start = line.find_first_not_of(kBlanks);
  while (start != std::string::npos) {
    const std::size_t end = std::min(line.find_first_of(kBlanks, start), line.size());
    words.push_back({start, line.substr(start, end - start)});
    start = line.find_first_not_of(kBlanks, end);
  }
  const bool is_new = words.empty() || words.back().start + words.back().text.size() < line.size();
  if (is_new) words.push_back({line.size(), ""});
  return words;
}

std::vector<std::string> SplitAtCommas(std::string_view choices) {
  std::vector<std::string> words(1);
  for (const char c : choices) {
    if (c == ',') {
      words.emplace_back();
    } else {
      words.back() += c;
    }
  }
  return words;
}

/// Those names that begin with what is typed.
std::vector<Candidate> Fitting(const std::string& typed, const std::vector<std::string>& names,
                               bool is_whole = true) {
  std::vector<Candidate> candidates;
  for (const std::string& name : names) {
    if (BeginsWithNoCase(name, typed)) candidates.push_back({name, is_whole});
  }
  return candidates;
}

bool ComesBefore(const std::string& one, const std::string& other) {
  const auto is_before = [](char a, char b) { return ToLowerLetter(a) < ToLowerLetter(b); };
  return std::lexicographical_compare(one.begin(), one.end(), other.begin(), other.end(),
                                      is_before);
}

std::vector<std::string> CommandNames() {
  std::vector<std::string> names;
  for (const Command& command : Commands()) {
    if (command.name != nullptr) names.emplace_back(command.name);
  }
  std::sort(names.begin(), names.end(), ComesBefore);
  return names;
}

/// Files and directories whose path begins with what is typed. A name that begins with a dot is
/// offered only when the dot is typed.
std::vector<Candidate> Paths(const std::string& typed, const KnownNames& names,
                             bool directories_only, bool blanks) {
  const std::size_t separator = LastSeparator(typed);
  const std::size_t name_at = separator == std::string::npos ? 0 : separator + 1;
  const std::string directory = typed.substr(0, name_at);
  const std::string beginning = typed.substr(name_at);
  std::vector<Candidate> candidates;
  for (const std::string& name : names.files(directory)) {
    const bool is_directory = name.ends_with('/');
    if (!name.starts_with(beginning) || (directories_only && !is_directory)) continue;
    if (beginning.empty() && name.starts_with('.')) continue;
    if (!blanks && name.find_first_of(kBlanks) != std::string::npos) continue;
    candidates.push_back({directory + name, !is_directory});
  }
  return candidates;
}

/// Completes what is typed behind a command that is known.
class WordsBehindCommand {
 public:
  WordsBehindCommand(const Command& command, const std::string& line, std::vector<TypedWord> words,
                     const KnownNames& names)
      : expects_(command.expects),
        line_(line),
        typed_(std::move(words)),
        names_(names),
        forms_(expects_.words == nullptr ? std::vector<WordForm>() : expects_.words()) {}

  Completion Complete() const {
    const std::size_t last = typed_.size() - 1;
    if (typed_[last].text.starts_with("-")) return OfWord(FormsThatFit(true));
    // The last word that wants a value decides, for a name is the rest of the line and may hold
    // any word.
    for (std::size_t i = last; i-- > FirstPlace();) {
      const WordForm* const form = FormOf(i);
      if (form == nullptr) continue;
      if (form->choices.empty()) return OfOperand(form->value, i + 1);
      if (i + 1 == last) return OfWord(Fitting(typed_[last].text, SplitAtCommas(form->choices)));
      return {};
    }
    Completion completion;
    if (last == FirstPlace()) completion = OfWord(FormsThatFit(false));
    const Completion operands = OfOperand(expects_.operand, 1);
    if (completion.candidates.empty()) return operands;
    return completion;
  }

 private:
  /// Where words may begin to stand.
  std::size_t FirstPlace() const { return expects_.behind_number ? 2 : 1; }

  /// The form of the word at `place`, when something may stand behind that word; otherwise null.
  const WordForm* FormOf(std::size_t place) const {
    const auto fits = [&](const WordForm& form) {
      const bool has_value = form.value != Operand::kNothing || !form.choices.empty();
      return has_value && BeginsWithNoCase(typed_[place].text, form.prefix);
    };
    const auto form = std::find_if(forms_.begin(), forms_.end(), fits);
    return form == forms_.end() ? nullptr : &*form;
  }

  std::vector<Candidate> FormsThatFit(bool options) const {
    std::vector<std::string> names;
    for (const WordForm& form : forms_) {
      if (form.name.starts_with("-") == options) names.emplace_back(form.name);
    }
    return Fitting(typed_.back().text, names);
  }

  Completion OfWord(std::vector<Candidate> candidates) const {
    return {typed_.back().start, std::move(candidates)};
  }

  /// A name from the word at `place` to the end of the line.
  Completion OfRest(std::size_t place, const std::vector<std::string>& names) const {
    const std::size_t start = typed_[place].start;
    return {start, Fitting(line_.substr(start), names, false)};
  }

  /// What an operand may be that begins with the word at `place`.
  Completion OfOperand(Operand operand, std::size_t place) const {
    const bool is_here = place == typed_.size() - 1;
    switch (operand) {
      case Operand::kNothing:
        break;
      case Operand::kFile:
        if (is_here) return OfWord(Paths(typed_.back().text, names_, false, false));
        break;
      case Operand::kDirectory: {
        const std::size_t start = typed_[place].start;
        return {start, Paths(line_.substr(start), names_, true, true)};
      }
      case Operand::kPlayer:
        return OfRest(place, names_.players());
      case Operand::kParticipant:
        return OfRest(place, names_.participants());
      case Operand::kGroup:
        return OfWord(Fitting(typed_.back().text, names_.groups()));
      case Operand::kCommand:
        if (is_here) return OfWord(Fitting(typed_.back().text, CommandNames()));
        break;
    }
    return {};
  }

  const CommandWords& expects_;
  const std::string& line_;
  const std::vector<TypedWord> typed_;
  const KnownNames& names_;
  const std::vector<WordForm> forms_;
};

}  // namespace

Completion CompleteLine(const std::string& beginning, const KnownNames& names) {
  std::vector<TypedWord> words = WordsOfLine(beginning);
  const TypedWord& last = words.back();
  if (words.size() == 1 && IsBareName(last.text)) {
    return {last.start, Fitting(last.text, CommandNames())};
  }
  const Command* const command = FindCommand(beginning.substr(words.front().start));
  if (words.size() == 1 || command == nullptr) {
    return {last.start, Paths(last.text, names, false, false)};
  }
  return WordsBehindCommand(*command, beginning, std::move(words), names).Complete();
}

}  // namespace tarvendo
