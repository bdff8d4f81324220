// Queries several instruments at once: cpp-instrument COMMAND RESOURCE... prints a line for each, in their
// order. Exit status 1 if one did not answer.

#include <kolvane/Instrument.h>

#include <cstdio>
#include <exception>
#include <future>
#include <string>
#include <vector>

namespace {

struct Answer {
  bool good;
  std::string text;
};

Answer Ask(const std::string& resource, const std::string& command) {
  try {
    kolvane::InstrumentOptions options;
    options.TimeoutMs = 1500;
    kolvane::Instrument instrument(resource, options);
    return {true, instrument.Query(command)};
  } catch (const std::exception& error) {
    // InstrumentError: it did not answer; std::invalid_argument: there is no such resource.
    return {false, error.what()};
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fputs("usage: cpp-instrument COMMAND RESOURCE...\n", stderr);
    return 2;
  }
  std::vector<std::future<Answer>> answers;
  for (int i = 2; i < argc; ++i)
    answers.push_back(std::async(std::launch::async, Ask, std::string(argv[i]), std::string(argv[1])));
  bool good = true;
  for (std::future<Answer>& future : answers) {
    const Answer answer = future.get();
    good = good && answer.good;
    std::fprintf(answer.good ? stdout : stderr, "%s\n", answer.text.c_str());
  }
  return good ? 0 : 1;
}
