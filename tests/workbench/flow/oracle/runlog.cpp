#include "workbench/flow/oracle/runlog.h"

#include <sstream>
#include <stdexcept>

namespace qmrules::test {

std::vector<RunEvent> ReadRunLog(std::istream& log) {
  std::vector<RunEvent> events;
  std::string line;
  while (std::getline(log, line)) {
    std::istringstream words(line);
    RunEvent event;
    char kind = 0;
    words >> kind >> event.row;
    if (kind == 'C') {
      event.kind = RunEvent::Kind::ComesOut;
      words >> event.sense;
    } else if (kind == 'R') {
      event.kind = RunEvent::Kind::Reads;
      std::uint64_t length = 0;
      words >> event.name >> event.area >> event.begin >> length >> event.writer;
      event.end = event.begin + length;
    }
    if (!words || (kind != 'S' && kind != 'C' && kind != 'R')) throw std::invalid_argument("no line of a log: " + line);
    events.push_back(std::move(event));
  }
  return events;
}

}  // namespace qmrules::test
