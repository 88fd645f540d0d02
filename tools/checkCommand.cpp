#include "checkCommand.h"

#include "transformChain.h"

#include "morvane/morvane.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <cstdlib>

using namespace Morvane_2015_1_42;

namespace Command {

namespace {

struct Finding
{
    unsigned line; ///< 0: none in particular
    std::string text;
};

struct Report
{
    std::string file;
    std::vector<Finding> warnings;
    std::vector<Finding> errors; ///< one or none
};

// A logger gets no data of its own: what it writes to must be reachable by itself.
std::vector<std::string> loggedLines;
LoggerFunction nextLogger = nullptr;

void collect(LogLevel level, const char* line)
{
    loggedLines.emplace_back(line);
    nextLogger(level, line);
}

/// Collects log lines while it exists.
class LogCollector
{
public:
    explicit LogCollector(LoggerFunction next)
    {
        nextLogger = next;
        setLoggerFunction(collect);
    }
    ~LogCollector() { setLoggerFunction(nextLogger); }
    LogCollector(const LogCollector&) = delete;
    LogCollector& operator=(const LogCollector&) = delete;
};

/// A failure is logged where it arises, with the place in the library's sources in front: "xml\element(12): COLOR:...".
/// The status tells those that matter.
bool isFailure(const std::string& logLine)
{
    const size_t end = logLine.find("): COLOR:");
    if (end == std::string::npos || end == 0) return false;
    const size_t begin = logLine.find_last_not_of("0123456789", end - 1);
    return begin != std::string::npos && begin + 1 < end && logLine[begin] == '(' && logLine.find(' ') > end;
}

unsigned numberAt(const std::string& text, size_t at)
{
    return static_cast<unsigned>(std::strtoul(text.c_str() + at, nullptr, 10));
}

/// Adds what was logged since the last call, and the failure.
/// \param tellsLines whether the lines told are those of the file
void addFindings(Report& report, const MorvaneStatus& status, bool tellsLines)
{
    const auto findingOf = [&](const std::string& text) {
        return Finding{tellsLines ? lineToldBy(text, report.file) : 0, oneLine(text)};
    };
    for (const std::string& line : loggedLines) {
        if (!isFailure(line)) report.warnings.push_back(findingOf(line));
    }
    loggedLines.clear();
    if (!status) report.errors.push_back(findingOf(messageOf(status)));
}

Report check(const std::string& file)
{
    loggedLines.clear();
    Report report{file, {}, {}};
    TransformPtr transform;
    const MorvaneStatus loaded = loadColorTransform(file.c_str(), transform);
    addFindings(report, loaded, true);
    if (!loaded) return report;
    // Making the renderer finds what only shows there, and what is wrong in the files that are referred to.
    const MorvaneStatus finalized = finalize(transform, PF_RGBA_32f, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_DEFAULT,
                                             RESOLVE_BROADCAST_MONITOR, transform);
    addFindings(report, finalized, false);
    return report;
}

ExitCode codeOf(const Report& report)
{
    if (!report.errors.empty()) return ExitCode::TRANSFORM;
    return report.warnings.empty() ? ExitCode::OK : ExitCode::WARNINGS;
}

void printFindings(const Report& report, const char* kind, const std::vector<Finding>& findings)
{
    for (const Finding& finding : findings) {
        const std::string line = finding.line == 0 ? "" : ":" + std::to_string(finding.line);
        std::printf("%s%s: %s: %s\n", report.file.c_str(), line.c_str(), kind, finding.text.c_str());
    }
}

void printText(const Report& report)
{
    printFindings(report, "warning", report.warnings);
    printFindings(report, "error", report.errors);
    if (codeOf(report) == ExitCode::OK) std::printf("%s: ok\n", report.file.c_str());
}

nlohmann::ordered_json jsonOf(const std::vector<Finding>& findings)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const Finding& finding : findings) {
        list.push_back(nlohmann::ordered_json::object());
        if (finding.line != 0) list.back()["line"] = finding.line;
        list.back()["text"] = finding.text;
    }
    return list;
}

} // namespace

unsigned lineToldBy(const std::string& message, const std::string& file)
{
    // "Ignore element 'Foo' (line 8) where its parent is 'Bar' (line 6) FILE: ...": names hold no blanks, so this is
    // the first one.
    const std::string ignored = "Ignore element '", inBrackets = "' (line ";
    if (message.compare(0, ignored.size(), ignored) == 0) {
        const size_t at = message.find(inBrackets);
        return message.find(") " + file + ": ") == std::string::npos ? 0 : numberAt(message, at + inBrackets.size());
    }
    // "... line 8: FILE", and a few end with the number.
    std::string head = message;
    const std::string tail = ": " + file;
    if (head.size() > tail.size() && head.compare(head.size() - tail.size(), tail.size(), tail) == 0) {
        head.resize(head.size() - tail.size());
    }
    const std::string word = " line ";
    const size_t begin = head.find_last_not_of("0123456789");
    if (begin == std::string::npos || begin + 1 == head.size() || begin + 1 < word.size()) return 0;
    return head.compare(begin + 1 - word.size(), word.size(), word) == 0 ? numberAt(head, begin + 1) : 0;
}

ExitCode runCheck(const std::vector<std::string>& files, bool json, LoggerFunction logger)
{
    const LogCollector collector(logger);
    ExitCode worst = ExitCode::OK;
    nlohmann::ordered_json document = nlohmann::ordered_json::array();
    for (const std::string& file : files) {
        const Report report = check(file);
        const ExitCode code = codeOf(report);
        if (worst != ExitCode::TRANSFORM && code != ExitCode::OK) worst = code;
        if (json) {
            document.push_back({{"file", file},
                                {"usable", report.errors.empty()},
                                {"warnings", jsonOf(report.warnings)},
                                {"errors", jsonOf(report.errors)}});
        } else {
            printText(report);
        }
    }
    // Bytes that are no UTF-8 must not stop the listing.
    using Handler = nlohmann::ordered_json::error_handler_t;
    if (json) std::printf("%s\n", document.dump(2, ' ', false, Handler::replace).c_str());
    return worst;
}

} // namespace Command
