#include "base/record_file.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/text.h"

namespace tarvendo {

void RecordWriter::WriteInt(long long value) {
  text_.append(std::to_string(value)).append("\n");
}

void RecordWriter::WriteString(const std::string& text) {
  if (text.size() > kRecordText) cut_texts_.push_back(text);
  text_.append(text, 0, kRecordText).append("\n");
}

void RecordReader::ReadInt(int& field) {
  long long value = field;
  ReadLong(value);
  field = static_cast<int>(std::clamp<long long>(value, std::numeric_limits<int>::min(),
                                                 std::numeric_limits<int>::max()));
}

void RecordReader::ReadLong(long long& field) {
  if (const auto line = lines_.Read(kRecordLine)) Scanner(*line).ReadNumber(field);
}

void RecordReader::ReadString(std::string& field) {
  auto line = lines_.Read(kRecordLine);
  if (!line) return;
  if (!line->empty()) line->pop_back();
  field = std::move(*line);
}

}  // namespace tarvendo
