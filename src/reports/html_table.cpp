#include "reports/html_table.h"

#include <string_view>

#include "base/text.h"
#include "platform/faults.h"
#include "reports/cross_table.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// "Time control: 1 min 30 sec with 2 sec increment for 40 moves<br>"
std::string TimeControlText(const TimeControl& time) {
  std::string text = Format("Time control: %d min ", time.seconds / 60);
  if (time.seconds % 60 != 0) text += Format("%d sec ", time.seconds % 60);
  if (time.inc != 0) text += Format("with %d sec increment ", time.inc);
  text += "for ";
  return text + (time.mps != 0 ? Format("%d moves<br>", time.mps) : "the whole game.<br>");
}

std::string Head(const std::string& name) {
  return "<html>\n\n<head>\n"
         "<meta http-equiv=\"Content-Type\"\n"
         "content=\"text/html; charset=iso-8859-1\">\n"
         "<title>" +
         name + "</title\n\n<body>\n";
}

std::string Conditions(const std::string& name, const TourneySettings& settings) {
  return "<p><font size=\"6\">" + name + "</font></p>" +                 //
         "<p>Computer: " + EscapeHtml(settings.computer) + "<br>\n" +    //
         "Hashtables: " + EscapeHtml(settings.hash_tables) + "<br>\n" +  //
         "Tablebases: " + EscapeHtml(settings.tablebases) + "<br>\n" +   //
         TimeControlText(settings.time_control) +                        //
         "Ponder: " + (settings.ponder != 0 ? "On" : "Off") + "</p>";
}

void AppendHeading(std::string& html, const TableColumn& column) {
  if (column.form->page_heading == nullptr) return;
  html += "<td>";
  if (column.cross_number != 0) {
    html += "<center>" + std::to_string(column.cross_number) + "</center>";
  } else {
    html += column.form->page_heading;
  }
  html += "</td>\n";
}

/// What a bar is made of.
struct BarPieces {
  std::string end;
  std::string full;
  std::string half;
};

BarPieces MakeBarPieces(bool pictures, const std::string& pics_dir) {
  if (!pictures) {
    return {"<font color=\"#0000FF\">|</font>", "<font color=\"#FF0000\">#</font>",
            "<font color=\"#FF0000\">\\</font>"};
  }
  const std::string image = "<img src=\"" + EscapeHtml(pics_dir);
  return {image + "break.gif\">", image + "full.gif\">", image + "half.gif\">"};
}

/// Writes the rows of one table.
class RowWriter {
 public:
  RowWriter(const CrossTable& table, const std::string& pics_dir, std::string& html)
      : table_(table), pieces_(MakeBarPieces(table.pictures, pics_dir)), html_(html) {}

  void Write(const TableRow& row) {
    html_ += "<tr>\n";
    for (const TableColumn& column : table_.columns)
      WriteCell(row, column);
    html_ += "</tr>\n";
  }

 private:
  void WriteCell(const TableRow& row, const TableColumn& column) {
    const std::string text = column.Cell(row);
    if (column.form->kind == ColumnKind::kBar) return WriteBar(text);
    html_ += "<td><p align=\"";
    html_ += column.form->page_align;
    html_ += "\">" + EscapeHtml(text) + "</p></td>\n";
  }

  /// The bar of the text form, with something to see in place of each character.
  void WriteBar(const std::string& bar) {
    html_ += "<td>";
    for (const char piece : bar)
      html_ += piece == '|' ? pieces_.end : piece == '#' ? pieces_.full : pieces_.half;
    html_ += "</td>\n";
  }

  const CrossTable& table_;
  const BarPieces pieces_;
  std::string& html_;
};

constexpr const char* kFooter =
    "<hr><p><font color=\"#000000\" size=\"2\">This tourney was arranged with </font>"
    "<a href=\"https://tarvendo.example.org/\"><font size=\"2\">Tarvendo</font></a>"
    "<font color=\"#000000\" size=\"2\">, a tournament manager for chess engines."
    "</font></p></body<\n</html>\n";

}  // namespace

std::string HtmlTable(const CrossTable& table, const TourneySettings& settings) {
  const std::string name = EscapeHtml(settings.name);
  std::string html = Head(name) + Conditions(name, settings) + "<table border=\"1\">\n<tr>\n";
  for (const TableColumn& column : table.columns)
    AppendHeading(html, column);
  html += "</tr>\n";
  RowWriter writer(table, settings.pics_dir, html);
  for (const TableRow& row : table.rows) {
    EndWhenAsked();
    writer.Write(row);
  }
  return html + "</table>\n</font>\n" + kFooter;
}

std::string EscapeHtml(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

}  // namespace tarvendo
