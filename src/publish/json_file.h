#pragma once

#include <string>

namespace tarvendo {

struct Report;

/// The report as one JSON object, for programs that go on with it; its fields are told in
/// docs/files.md.
std::string ReportJson(const Report& report);

}  // namespace tarvendo
