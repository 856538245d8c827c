// quib: the application, with windows where there is a display.

#include <Process/Launch.h>
#include <Spelling/HunspellProcess.h>
#include <Window/WindowFrontEnd.h>

#include <algorithm>
#include <string_view>

int main(int argc, char **argv)
{
    quib::HunspellProcess::prepare(argc, argv);
    // What is only sent from a terminal or another program shows no window.
    const bool isSending =
        std::any_of(argv, argv + argc, [](const char *word) { return std::string_view(word) == "--send"; });
    if (!isSending && quib::WindowFrontEnd::hasDisplay()) {
        quib::WindowFrontEnd frontEnd;
        return quib::runQuib(argc, argv, frontEnd);
    }
    quib::WindowlessFrontEnd frontEnd;
    return quib::runQuib(argc, argv, frontEnd);
}
