#include "infoCommand.h"

#include "transformChain.h"

#include "morvane/morvane.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <utility>

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

void printText(const Section& section, int level)
{
    std::printf("%*s%s\n", 2 * level, "", section.title.c_str());
    for (const auto& [label, value] : section.fields) {
        std::printf("%*s%s: %s\n", 2 * (level + 1), "", label.c_str(), oneLine(value).c_str());
    }
    for (const Section& inner : section.sections)
        printText(inner, level + 1);
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

std::vector<Section> describe(const std::string& file)
{
    SectionCollector collector;
    const Morvane::MorvaneStatus status = loadTransform(file)->describe(collector);
    if (!status) throw Failure(ExitCode::TRANSFORM, "cannot describe transform '" + file + "': " + messageOf(status));
    return collector.getSections();
}

} // namespace

ExitCode runInfo(const std::vector<std::string>& files, bool json)
{
    ExitCode code = ExitCode::OK;
    nlohmann::ordered_json document = nlohmann::ordered_json::array();
    for (const std::string& file : files) {
        try {
            const std::vector<Section> sections = describe(file);
            nlohmann::ordered_json list = nlohmann::ordered_json::array();
            if (!json) std::printf("%s\n", file.c_str());
            for (const Section& section : sections) {
                if (json) {
                    list.push_back(jsonOf(section));
                } else {
                    printText(section, 1);
                }
            }
            document.push_back({{"file", file}, {"sections", list}});
        } catch (const Failure& failure) {
            report(failure);
            code = failure.getCode();
        }
    }
    // Bytes that are no UTF-8 must not stop the listing.
    using Handler = nlohmann::ordered_json::error_handler_t;
    if (json) std::printf("%s\n", document.dump(2, ' ', false, Handler::replace).c_str());
    return code;
}

} // namespace Command
