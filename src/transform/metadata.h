#pragma once

#include <string>
#include <vector>

namespace Color {

/// A tree of named nodes that a transform carries along. A node is a leaf with a value or a container with children.
/// Names may repeat among children; look-ups find the first.
class Metadata
{
public:
    explicit Metadata(const std::string& name);

    const std::string& getName() const { return m_name; }
    /// Throws 0x20d0002 when this is a container.
    const std::string& getValue() const;
    /// Throws 0x20d0002 when this is a container.
    void setValue(const std::string& value);

    bool isLeaf() const { return m_children.empty(); }
    const std::vector<Metadata>& getChildren() const { return m_children; }

    /// Adds a child at the end and returns it; the reference is valid until the next child is added. Throws 0x20d0001
    /// on an empty name and 0x20d0003 when this is a leaf that has a value.
    Metadata& addChild(const std::string& name);
    /// Adds a finished child, under the same rules.
    Metadata& addChild(Metadata child);

    /// The first child of this name. Throws 0x20d0001 on an empty name, 0x20d0003 when this is a leaf with a value, and
    /// 0x20d0004 when there is no such child.
    const Metadata& getChild(const std::string& name) const;
    Metadata& getChild(const std::string& name);

    /// The value of the first child of this name; it must be a leaf.
    const std::string& getChildValue(const std::string& name) const;

    /// Takes over value and children of another node; the name stays.
    void setContent(const Metadata& other);

    bool isEqual(const Metadata& other) const;

private:
    void checkLeaf() const;
    /// Also checks the name of the child that is to be added or found.
    void checkContainer(const std::string& childName) const;

    std::string m_name;
    std::string m_value;
    std::vector<Metadata> m_children;
};

} // namespace Color
