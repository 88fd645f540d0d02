#include "infoCommand.h"

#include "opPicture.h"
#include "transformChain.h"

#include "morvane/morvane.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <utility>

#include <unistd.h>

namespace Command {

namespace {

struct Section
{
    std::string title;
    std::vector<std::pair<std::string, std::string>> fields;
    std::vector<Section> sections;
};

/// Builds the tree of sections that a transform describes itself with.
class SectionCollector : public Morvane::Transform::ContentCallbacks
{
public:
    void beginSection(const char* title) override { m_open.push_back({title, {}, {}}); }

    void endSection() override
    {
        Section done = std::move(m_open.back());
        m_open.pop_back();
        m_open.back().sections.push_back(std::move(done));
    }

    void addField(const char* label, const char* value) override { m_open.back().fields.emplace_back(label, value); }

    /// The sections on the outermost level.
    const std::vector<Section>& getSections() const { return m_open.front().sections; }

private:
    std::vector<Section> m_open = std::vector<Section>(1); ///< the ones begun, below a nameless root
};

/// A transform file, described.
struct Description
{
    Section transform;
    std::vector<TextPicture> pictures; ///< per operator, empty where it has none; or none at all
};

void printHead(const Section& section, int level)
{
    std::printf("%*s%s\n", 2 * level, "", section.title.c_str());
    for (const auto& [label, value] : section.fields) {
        std::printf("%*s%s: %s\n", 2 * (level + 1), "", label.c_str(), oneLine(value).c_str());
    }
}

void printText(const Description& description)
{
    printHead(description.transform, 1);
    for (size_t i = 0; i < description.transform.sections.size(); ++i) {
        printHead(description.transform.sections[i], 2);
        if (i >= description.pictures.size()) continue;
        for (const std::string& line : description.pictures[i])
            std::printf("%*s%s\n", line.empty() ? 0 : 6, "", line.c_str());
    }
}

nlohmann::ordered_json jsonOf(const Section& section)
{
    nlohmann::ordered_json fields = nlohmann::ordered_json::array();
    for (const auto& [label, value] : section.fields)
        fields.push_back({{"label", label}, {"value", value}});
    nlohmann::ordered_json sections = nlohmann::ordered_json::array();
    for (const Section& inner : section.sections)
        sections.push_back(jsonOf(inner));
    return {{"title", section.title}, {"fields", fields}, {"sections", sections}};
}

bool isBypassed(const Section& op)
{
    return std::find(op.fields.begin(), op.fields.end(), std::pair<std::string, std::string>("Bypass", "true")) !=
           op.fields.end();
}

std::vector<TextPicture> drawOps(const Morvane::TransformPtr& transform, const std::vector<Section>& ops, Glyphs glyphs)
{
    // Taking large tables apart takes a while, and most stand alone.
    const auto parts = ops.size() == 1 ? std::vector<Morvane::TransformPtr>{transform} : splitTransform(transform);
    std::vector<TextPicture> pictures;
    if (parts.size() != ops.size()) return pictures;
    for (size_t i = 0; i < ops.size(); ++i)
        pictures.push_back(isBypassed(ops[i]) ? TextPicture() : drawOp(ops[i].title, parts[i], glyphs));
    return pictures;
}

Description describe(const std::string& file, bool withPictures)
{
    const Morvane::TransformPtr transform = loadTransform(file);
    SectionCollector collector;
    const Morvane::MorvaneStatus status = transform->describe(collector);
    if (!status) throw Failure(ExitCode::TRANSFORM, "cannot describe transform '" + file + "': " + messageOf(status));
    Description description{collector.getSections().front(), {}};
    if (withPictures) description.pictures = drawOps(transform, description.transform.sections, glyphsOfLocale());
    return description;
}

} // namespace

ExitCode runInfo(const std::vector<std::string>& files, const InfoOptions& options)
{
    const bool withPictures = !options.json && (options.picture || isatty(STDOUT_FILENO) == 1);
    ExitCode code = ExitCode::OK;
    nlohmann::ordered_json document = nlohmann::ordered_json::array();
    for (const std::string& file : files) {
        try {
            const Description description = describe(file, withPictures);
            if (options.json) {
                document.push_back(
                    {{"file", file}, {"sections", nlohmann::ordered_json::array({jsonOf(description.transform)})}});
            } else {
                std::printf("%s\n", file.c_str());
                printText(description);
            }
        } catch (const Failure& failure) {
            report(failure);
            code = failure.getCode();
        }
    }
    // Bytes that are no UTF-8 must not stop the listing.
    using Handler = nlohmann::ordered_json::error_handler_t;
    if (options.json) std::printf("%s\n", document.dump(2, ' ', false, Handler::replace).c_str());
    return code;
}

} // namespace Command
