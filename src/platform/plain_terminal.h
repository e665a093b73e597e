#pragma once

#include "platform/terminal.h"

namespace tarvendo {

/// A terminal that does no more than input.h: pipes, files, and a console that has its own editing.
class PlainTerminal : public Terminal {
 public:
  void Write(const std::string& text) override;
  void WriteError(const std::string& text) override;
  std::unique_ptr<InputStream> OpenKeyboard(LineHelp help) override;
  void BeginPage() override {}
  void ShowPage() override {}
  void GiveBack() override {}
};

}  // namespace tarvendo
