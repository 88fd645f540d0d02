#include "failure.h"

#include <cstdio>

namespace Command {

Failure::Failure(ExitCode code, const std::string& text) : std::runtime_error(oneLine(text)), m_code(code) {}

std::string oneLine(const std::string& text)
{
    const char* const blanks = " \t\r\n";
    std::string line;
    size_t begin = text.find_first_not_of(blanks);
    while (begin != std::string::npos) {
        const size_t end = text.find_first_of("\r\n", begin);
        std::string part = text.substr(begin, end == std::string::npos ? end : end - begin);
        part.erase(part.find_last_not_of(blanks) + 1);
        if (!line.empty()) line += line.back() == ':' ? " " : "; ";
        line += part;
        begin = end == std::string::npos ? end : text.find_first_not_of(blanks, end);
    }
    return line;
}

Failure cannotRead(const std::string& path, const std::string& why)
{
    return {ExitCode::READ, "cannot read image '" + path + "': " + why};
}

Failure cannotWrite(const std::string& path, const std::string& why)
{
    return {ExitCode::WRITE, "cannot write image '" + path + "': " + why};
}

void report(const Failure& failure) { std::fprintf(stderr, "morvane: %s\n", failure.what()); }

} // namespace Command
