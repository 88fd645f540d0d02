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

/// A transform, described.
struct Description
{
    Section transform;
    std::vector<TextPicture> pictures; ///< per operator, empty where it has none; or none at all
};

struct Action
{
    Morvane::OptimizerActionType type;
    unsigned number; ///< of the operator, or of the first of two, from 1
    std::string opTypeName;
    unsigned score;
};

class ActionCollector : public Morvane::OptimizerCallback
{
public:
    void addAction(Morvane::OptimizerActionType type, unsigned index, const char* opTypeName, unsigned score) override
    {
        actions.push_back({type, index + 1, opTypeName, score});
    }

    std::vector<Action> actions;
};

/// What the optimizer makes of a transform.
struct Optimization
{
    Description before;
    std::vector<Action> actions;
    Description after;
};

void printFields(const Section& section, int level)
{
    for (const auto& [label, value] : section.fields) {
        std::printf("%*s%s: %s\n", 2 * level, "", label.c_str(), oneLine(value).c_str());
    }
}

/// \param numbered whether each operator is shown with its number, from 1
void printOps(const Description& description, bool numbered)
{
    for (size_t i = 0; i < description.transform.sections.size(); ++i) {
        const Section& op = description.transform.sections[i];
        std::printf("    %s%s\n", numbered ? (std::to_string(i + 1) + ". ").c_str() : "", op.title.c_str());
        printFields(op, 3);
        if (i >= description.pictures.size()) continue;
        for (const std::string& line : description.pictures[i])
            std::printf("%*s%s\n", line.empty() ? 0 : 6, "", line.c_str());
    }
}

void printText(const Description& description)
{
    std::printf("  %s\n", description.transform.title.c_str());
    printFields(description.transform, 2);
    printOps(description, false);
}

const char* nameOf(Morvane::OptimizerActionType type)
{
    switch (type) {
    case Morvane::OPTIMIZER_ACTION_NONE:
        return "nothing";
    case Morvane::OPTIMIZER_ACTION_REMOVE_OP:
        return "remove operator";
    case Morvane::OPTIMIZER_ACTION_REMOVE_RANGE:
        return "remove redundant range";
    case Morvane::OPTIMIZER_ACTION_MERGE_MATRICES:
        return "merge matrices";
    case Morvane::OPTIMIZER_ACTION_MERGE_LUTS_1D:
        return "merge 1D LUTs";
    case Morvane::OPTIMIZER_ACTION_MERGE_LUTS_3D:
        return "merge 3D LUTs";
    }
    return "";
}

void printText(const Optimization& optimization)
{
    std::puts("  Before");
    printOps(optimization.before, true);
    std::puts(optimization.actions.empty() ? "  Actions: none" : "  Actions");
    for (const Action& action : optimization.actions) {
        std::printf("    %s: %u. %s, score %u\n", nameOf(action.type), action.number, action.opTypeName.c_str(),
                    action.score);
    }
    std::puts("  After");
    printOps(optimization.after, true);
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

nlohmann::ordered_json jsonOf(const std::string& file, const Description& description)
{
    return {{"file", file}, {"sections", nlohmann::ordered_json::array({jsonOf(description.transform)})}};
}

nlohmann::ordered_json jsonOf(const std::string& file, const Optimization& optimization)
{
    nlohmann::ordered_json actions = nlohmann::ordered_json::array();
    for (const Action& action : optimization.actions) {
        actions.push_back({{"action", nameOf(action.type)},
                           {"type", action.type},
                           {"operator", action.number},
                           {"title", action.opTypeName},
                           {"score", action.score}});
    }
    return {{"file", file},
            {"before", jsonOf(optimization.before.transform)["sections"]},
            {"actions", actions},
            {"after", jsonOf(optimization.after.transform)["sections"]}};
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

Description describe(const std::string& file, const Morvane::TransformPtr& transform, bool withPictures)
{
    SectionCollector collector;
    const Morvane::MorvaneStatus status = transform->describe(collector);
    if (!status) throw Failure(ExitCode::TRANSFORM, "cannot describe transform '" + file + "': " + messageOf(status));
    Description description{collector.getSections().front(), {}};
    if (withPictures) description.pictures = drawOps(transform, description.transform.sections, glyphsOfLocale());
    return description;
}

Optimization optimize(const std::string& file, Morvane::OptimizerFlags flags, bool withPictures)
{
    Morvane::TransformPtr flat, optimized;
    ActionCollector collector;
    const Morvane::MorvaneStatus status = Morvane::optimizeTransform(
        loadTransform(file), flags, Morvane::RESOLVE_BROADCAST_MONITOR, collector, flat, optimized);
    if (!status) throw Failure(ExitCode::TRANSFORM, "cannot optimize transform '" + file + "': " + messageOf(status));
    return {describe(file, flat, withPictures), collector.actions, describe(file, optimized, withPictures)};
}

/// Prints what is shown of a file, or adds it to the document.
template <class Shown>
void show(const std::string& file, const Shown& shown, bool json, nlohmann::ordered_json& document)
{
    if (json) {
        document.push_back(jsonOf(file, shown));
    } else {
        std::printf("%s\n", file.c_str());
        printText(shown);
    }
}

} // namespace

ExitCode runInfo(const std::vector<std::string>& files, const InfoOptions& options)
{
    const Morvane::OptimizerFlags optimizer =
        options.threshold | (options.keepDynamic ? Morvane::OPTIMIZER_KEEP_DYNAMIC : 0u);
    const bool withPictures = !options.json && (options.picture || isatty(STDOUT_FILENO) == 1);
    ExitCode code = ExitCode::OK;
    nlohmann::ordered_json document = nlohmann::ordered_json::array();
    for (const std::string& file : files) {
        try {
            if (options.optimized) {
                show(file, optimize(file, optimizer, withPictures), options.json, document);
            } else {
                show(file, describe(file, loadTransform(file), withPictures), options.json, document);
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
