#include "outputPattern.h"

#include "failure.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace fs = std::filesystem;

namespace Command {

namespace {

const std::string kDigits = "0123456789";
const std::string kStem = "{stem}";
/// Wider fields are a typing error; no file name is that long.
constexpr size_t kMaxFieldWidth = 64;

/// A place in a pattern that something else is put into.
struct Field
{
    enum Kind
    {
        STEM,
        FRAME,
        PERCENT,
    };
    Kind kind;
    size_t begin;
    size_t length;
    size_t width; ///< digits of the frame number
};

/// Reads a field that starts at the position; length is 0 when there is none.
Field fieldAt(const std::string& pattern, size_t begin)
{
    if (pattern.compare(begin, kStem.size(), kStem) == 0) return {Field::STEM, begin, kStem.size(), 0};
    if (pattern[begin] == '#') {
        const size_t end = std::min(pattern.find_first_not_of('#', begin), pattern.size());
        return {Field::FRAME, begin, end - begin, end - begin};
    }
    if (pattern.compare(begin, 2, "%%") == 0) return {Field::PERCENT, begin, 2, 0};
    if (pattern[begin] == '%') {
        const size_t end = pattern.find_first_not_of(kDigits, begin + 1);
        const size_t digits = end == std::string::npos ? 0 : end - begin - 1;
        // Only the zero-filled form carries a width: "%4d" would put blanks into file names.
        const bool wellFormed = digits == 0 || (pattern[begin + 1] == '0' && digits > 1 && digits < 4);
        if (end != std::string::npos && pattern[end] == 'd' && wellFormed) {
            const size_t width = digits == 0 ? 1 : std::stoul(pattern.substr(begin + 1, digits));
            return {Field::FRAME, begin, digits + 2, width};
        }
    }
    return {Field::PERCENT, begin, 0, 0};
}

/// The fields of a pattern from left to right.
std::vector<Field> fieldsOf(const std::string& pattern)
{
    std::vector<Field> fields;
    for (size_t at = 0; at < pattern.size();) {
        const Field field = fieldAt(pattern, at);
        if (field.length > 0) fields.push_back(field);
        at += std::max<size_t>(field.length, 1);
    }
    return fields;
}

/// The last run of digits of a stem without leading zeros, empty when it has no digit.
std::string frameNumber(const std::string& stem)
{
    const size_t last = stem.find_last_of(kDigits);
    if (last == std::string::npos) return {};
    const size_t before = stem.find_last_not_of(kDigits, last);
    const size_t first = before == std::string::npos ? 0 : before + 1;
    const std::string digits = stem.substr(first, last - first + 1);
    const size_t significant = digits.find_first_not_of('0');
    return significant == std::string::npos ? "0" : digits.substr(significant);
}

std::string frameText(const Field& field, const std::string& stem, const std::string& pattern, const std::string& input)
{
    const std::string number = frameNumber(stem);
    if (number.empty()) {
        throw Failure(ExitCode::USAGE, "the name of '" + input + "' holds no frame number for '" + pattern + "'");
    }
    if (field.width > kMaxFieldWidth) {
        throw Failure(ExitCode::USAGE, "the frame number in '" + pattern + "' is too wide");
    }
    return std::string(field.width - std::min(field.width, number.size()), '0') + number;
}

/// One text per file, however its path is written.
std::string identityOf(const std::string& path)
{
    std::error_code ignored;
    const fs::path resolved = fs::weakly_canonical(fs::absolute(path), ignored);
    return ignored ? path : resolved.string();
}

} // namespace

bool isOutputPattern(const std::string& output)
{
    const std::vector<Field> fields = fieldsOf(output);
    return std::any_of(fields.begin(), fields.end(), [](const Field& f) { return f.kind != Field::PERCENT; });
}

std::string outputName(const std::string& pattern, const std::string& input)
{
    if (!isOutputPattern(pattern)) return pattern;
    const std::string stem = fs::path(input).stem().string();
    std::string name;
    size_t copied = 0;
    for (const Field& field : fieldsOf(pattern)) {
        name += pattern.substr(copied, field.begin - copied);
        copied = field.begin + field.length;
        switch (field.kind) {
        case Field::STEM:
            name += stem;
            break;
        case Field::FRAME:
            name += frameText(field, stem, pattern, input);
            break;
        case Field::PERCENT:
            name += '%';
            break;
        }
    }
    return name + pattern.substr(copied);
}

std::vector<FilePair> pairFiles(const std::vector<std::string>& inputs, const std::string& output)
{
    if (inputs.size() > 1 && !isOutputPattern(output)) {
        throw Failure(ExitCode::USAGE, "several images need a pattern as output, such as 'out.####.exr' or "
                                       "'out/{stem}.exr', but it is '" +
                                           output + "'");
    }
    std::map<std::string, std::string> inputByIdentity;
    for (const std::string& input : inputs)
        inputByIdentity.emplace(identityOf(input), input);

    std::vector<FilePair> pairs;
    std::map<std::string, std::string> writerByIdentity;
    for (const std::string& input : inputs) {
        const FilePair pair{input, outputName(output, input)};
        const std::string identity = identityOf(pair.output);
        const auto [writer, isNew] = writerByIdentity.emplace(identity, input);
        if (!isNew) {
            throw Failure(ExitCode::USAGE, "'" + writer->second + "' and '" + input + "' would both be written to '" +
                                               pair.output + "'");
        }
        const auto reader = inputByIdentity.find(identity);
        if (reader != inputByIdentity.end() && identity != identityOf(input)) {
            throw Failure(ExitCode::USAGE, "the output '" + pair.output + "' of '" + input + "' is also an input");
        }
        std::error_code ignored;
        if (fs::is_directory(pair.output, ignored)) {
            throw Failure(ExitCode::USAGE, "the output '" + pair.output + "' is a directory");
        }
        pairs.push_back(pair);
    }
    return pairs;
}

} // namespace Command
