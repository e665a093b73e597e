#include "console/options.h"

#include "base/log.h"
#include "base/text.h"
#include "console/command_args.h"
#include "console/unknown_word.h"

namespace tarvendo {
namespace {

bool LooksLikeOption(const std::string& word) {
  return word.starts_with("-");
}

bool IsWordOf(const OptionForm& form, const std::string& word) {
  return form.whole_word ? EqualsNoCase(word, form.prefix) : BeginsWithNoCase(word, form.prefix);
}

const OptionForm* FindForm(std::span<const OptionForm> forms, const std::string& word) {
  for (const OptionForm& form : forms) {
    if (IsWordOf(form, word)) return &form;
  }
  return nullptr;
}

/// The words from `first` up to the next option, as they stand on the line.
std::string TextUpToNextOption(const CommandArgs& args, int first) {
  int next = first;
  while (next < args.Count() && !LooksLikeOption(args.Word(next)))
    ++next;
  const std::string rest = args.RestFrom(first);
  std::string text = rest.substr(0, rest.size() - args.RestFrom(next).size());
  TrimBothSides(text);
  return text;
}

}  // namespace

const GivenOption* GivenOptions::Find(const OptionForm& form) const {
  const GivenOption* found = nullptr;
  for (const GivenOption& option : options) {
    if (option.Is(form)) found = &option;
  }
  return found;
}

int GivenOptions::Number(const OptionForm& form) const {
  const GivenOption* option = Find(form);
  return option != nullptr ? ToInt(option->value) : 0;
}

std::optional<GivenOptions> ReadOptions(const CommandArgs& args,
                                        std::span<const OptionForm> forms) {
  GivenOptions given;
  for (int i = 1; i < args.Count(); ++i) {
    const std::string word = args.Word(i);
    if (!LooksLikeOption(word)) {
      given.others.push_back(word);
      continue;
    }
    const OptionForm* form = FindForm(forms, word);
    if (form == nullptr) {
      PrintUnknownWord(word);
      return std::nullopt;
    }
    GivenOption option{form, "", TextUpToNextOption(args, i + 1)};
    if (form->takes_value && !option.rest.empty()) option.value = args.Word(++i);
    given.options.push_back(option);
  }
  return given;
}

std::vector<WordForm> WordsOf(std::span<const OptionForm> forms) {
  std::vector<WordForm> words;
  for (const OptionForm& form : forms) {
    words.push_back(
        {form.name.empty() ? form.prefix : form.name, form.prefix, form.value, form.choices});
  }
  return words;
}

}  // namespace tarvendo
