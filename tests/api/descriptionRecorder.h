#pragma once

#include "morvane/morvane.h"

#include <string>
#include <vector>

/// Writes down everything that describe() tells, one line each, indented by depth of section.
class DescriptionRecorder : public Morvane::Transform::ContentCallbacks
{
public:
    void beginSection(const char* title) override
    {
        add(std::string("[") + title);
        m_indent += "  ";
    }

    void endSection() override
    {
        m_indent.resize(m_indent.size() - 2);
        add("]");
    }

    void addField(const char* label, const char* value) override { add(std::string(label) + " = " + value); }

    const std::vector<std::string>& lines() const { return m_lines; }

private:
    void add(const std::string& text) { m_lines.push_back(m_indent + text); }

    std::string m_indent;
    std::vector<std::string> m_lines;
};
