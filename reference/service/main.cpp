// qgsasvc: the filter service stand-in. "-Start" and "-Stop" are the two words the program
// uses; the rest are for the tests and the demo. The words are compared whole.
#include "service/ControlCommand.h"
#include "service/ServiceLauncher.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

const char* const Usage = "usage: qgsasvc -Start | -Stop | --foreground\n"
                          "       qgsasvc --emit <id> [field=value | int=N | str=T ...]\n"
                          "       qgsasvc --counts [spam=N] [examined=M]\n"
                          "       qgsasvc --simulate-filtering [messages=N] [spam=K]\n"
                          "       qgsasvc --fault slow [ms] | refuse | drop | overload | off\n"
                          "       qgsasvc --status\n";

int Dispatch(const std::vector<std::string>& words) {
    if (words.empty()) {
        std::fputs(Usage, stderr);
        return 2;
    }
    const std::string& word = words.front();
    const std::vector<std::string> rest(words.begin() + 1, words.end());
    if (words.size() == 1 && word == "-Start")
        return ServiceLauncher::start();
    if (words.size() == 1 && word == "-Stop")
        return ServiceLauncher::stop();
    if (words.size() == 1 && word == "--foreground")
        return ServiceLauncher::foreground();
    if (words.size() == 1 && word == "--help") {
        std::fputs(Usage, stdout);
        return 0;
    }
    if (word == "--emit")
        return ControlCommand::run(ControlOperation::Emit, rest);
    if (word == "--counts")
        return ControlCommand::run(ControlOperation::Counts, rest);
    if (word == "--simulate-filtering")
        return ControlCommand::run(ControlOperation::SimulateFiltering, rest);
    if (word == "--fault")
        return ControlCommand::run(ControlOperation::Fault, rest);
    if (word == "--status")
        return ControlCommand::run(ControlOperation::Status, rest);
    std::fputs(Usage, stderr);
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return Dispatch(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "qgsasvc: %s\n", error.what());
    } catch (...) {
        std::fprintf(stderr, "qgsasvc: unexpected failure\n");
    }
    return 1;
}
