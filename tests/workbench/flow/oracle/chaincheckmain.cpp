// Holds the analysis of a program against the logs of its runs: flow_chaincheck PROGRAM.cbl LOG…
// Prints each miss, and at the end "checked N told N seen N misses N"; exits with 1 when there are misses.

#include <fstream>
#include <iostream>
#include <sstream>

#include "support/cobolmodel.h"
#include "workbench/codemodel/modelfile.h"
#include "workbench/flow/oracle/chaincheck.h"

namespace {

std::string ReadFile(const char* path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(std::string(path) + " cannot be read");
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

int Check(int count, char** arguments) {
  // The model passes over a first line end.
  const qmrules::test::CobolModel program("\n" + ReadFile(arguments[1]));
  for (const std::string& diagnostic : program.Diagnostics()) std::cout << "diagnostic: " << diagnostic << '\n';
  qmrules::test::ChainCheck check(qmrules::workbench::codemodel::ModelImage::FromBytes(
      qmrules::workbench::codemodel::SerializeModel(program.Data()), arguments[1]));
  for (int place = 2; place < count; ++place) {
    std::ifstream log(arguments[place]);
    if (!log) throw std::runtime_error(std::string(arguments[place]) + " cannot be read");
    check.Check(qmrules::test::ReadRunLog(log));
  }
  for (const std::string& miss : check.Misses()) std::cout << miss << '\n';
  std::cout << "checked " << check.Checked() << " told " << check.Told() << " seen " << check.Seen() << " misses "
            << check.Misses().size() << '\n';
  return check.Misses().empty() ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (count < 3) throw std::runtime_error("usage: flow_chaincheck PROGRAM.cbl LOG...");
    return Check(count, arguments);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 2;
  }
}
