#pragma once

#include <string>

namespace tarvendo {

struct CrossTable;
struct TourneySettings;

/// The table as a web page: the conditions of the tourney, the table with the same rows, columns
/// and cells as in the text form, a footer. Its oddities (two unfinished end tags, a font end tag
/// too many) are part of the page as users' scripts know it, and browsers bear with them. What the
/// user has typed is text in the page, whatever characters it holds.
std::string HtmlTable(const CrossTable& table, const TourneySettings& settings);

/// The text with "&", "<", ">" and the double quote as HTML entities.
std::string EscapeHtml(const std::string& text);

}  // namespace tarvendo
