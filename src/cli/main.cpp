#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "cli/cli.h"
#include "cli/systemenvironment.h"
#include "platform/clock.h"

int main(int argc, char** argv) {
  try {
    const std::vector<std::string> args(argv + (argc > 0 ? 1 : 0), argv + argc);
    const qmrules::platform::SystemClock clock;
    auto environment = qmrules::cli::SystemEnvironment(clock);
    return qmrules::cli::RunCli(args, environment);
  } catch (const std::exception& failure) {
    std::cerr << "qmrules: " << failure.what() << '\n';
    return qmrules::cli::kFailed;
  }
}
