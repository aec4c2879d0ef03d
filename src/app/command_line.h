#pragma once

#include <optional>
#include <string>
#include <vector>

// The words after the program's name. There is nothing to set by them: the program has no options
// but those that tell about it. Any thread.
namespace varnhold {

inline constexpr int exitUsage = 64;       // words that nobody knows (EX_USAGE)
inline constexpr int exitUnavailable = 69; // no display (EX_UNAVAILABLE)

struct CommandLine {
    enum class Request {
        run,
        tell,   // `text` goes to standard output, and that is all
        refuse, // `text` goes to standard error, and the exit code is exitUsage
    };

    Request request = Request::run;
    std::string text;
};

// A session manager's own word, by which a desktop starts again what ran when it ended, is taken
// and means nothing more.
[[nodiscard]] CommandLine readCommandLine(const std::vector<std::string>& words);

// Says what is to be said; the exit code, if the words leave nothing more to be done.
[[nodiscard]] std::optional<int> answerWords(int argc, char** argv);

} // namespace varnhold
