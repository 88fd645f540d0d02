#include "utils/errorMessage.h"

#include "utils/text.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace Color {

namespace {

constexpr std::size_t MESSAGE_CAPACITY = 1024;

struct ErrorRow
{
    ErrorId id;
    const char* text;
};

constexpr ErrorRow ERROR_TABLE[] = {
#define MORVANE_ERROR(id, name, text) {id, text},
#include "utils/errorTable.inc"
#undef MORVANE_ERROR
};

std::string joined(const char* category, const std::string& text) { return orEmpty(category) + (": " + text); }

} // namespace

const char* findErrorText(ErrorId id)
{
    for (const ErrorRow& row : ERROR_TABLE)
        if (row.id == id) return row.text;
    return nullptr;
}

const char* findErrorTextOrReport(ErrorId id, const char* sourceFile, int line)
{
    const char* text = findErrorText(id);
    if (!text)
        std::fprintf(stderr, "%s(%d): COLOR:UTILS: The error id 0x%x is illegal\n", sourcePath(sourceFile).c_str(),
                     line, id);
    return text;
}

std::string sourcePath(const char* sourceFile)
{
    std::string path = orEmpty(sourceFile);
    const std::size_t extension = path.find_last_of("./");
    if (extension != std::string::npos && path[extension] == '.') path.resize(extension);
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

ErrorMessage::ErrorMessage() : message("No Error"), logMessage(message) {}

ErrorMessage::ErrorMessage(const char* category, ErrorId errorId, const std::string& text)
    : id(errorId), message(text), logMessage(joined(category, text))
{}

ErrorMessage::~ErrorMessage() = default;

const ErrorMessage& ErrorMessage::none()
{
    static const ErrorMessage noError;
    return noError;
}

void ErrorMessage::setLogMessage(const char* category, const std::string& text) { logMessage = joined(category, text); }

ErrorMessage formatErrorMessage(const char* category, ErrorId id, const char* format, FormatArguments arguments)
{
    std::array<char, MESSAGE_CAPACITY> text;
    formatText(text.data(), text.size(), format, arguments);
    return {category, id, text.data()};
}

} // namespace Color
