#include "console/outputs.h"

namespace tarvendo {

bool Outputs::AddTimedLog(Host& host, const std::string& path) {
  timed_log_ = std::make_unique<TimedLog>(host.files, host.clock, path);
  return timed_log_->IsOpen();
}

void Outputs::ToConsole(const std::string& text) {
  Note(text);
  if (shares_terminal_) {
    status_.Above(text, [&] { console_(text); });
  } else {
    console_(text);
  }
}

void Outputs::ToError(const std::string& text) {
  Note(text);
  status_.Above(text, [&] { error_(text); });
}

void Outputs::NoteInEmergency(const std::string& text) {
  if (timed_log_) timed_log_->TryWrite(text);
}

void Outputs::Note(const std::string& text) {
  if (!timed_log_ || timed_log_->Write(text)) return;
  std::call_once(told_, [&] { error_("The file of --log cannot be written to.\n"); });
}

}  // namespace tarvendo
