#pragma once

#include "transform/transform.h"
#include "xml/element.h"

namespace Color::Xml::Reader {

/// ProcessList: the transform and what describes it.
class TransformElt : public ContainerElt
{
public:
    TransformElt(const std::string& name, const ReadContext& context);
    ~TransformElt() override;

    void start(Attributes attributes) override;
    void end() override;
    std::string getIdentifier() const override { return m_transform->getId(); }
    std::string getTypeName() const override { return "ProcessList"; }
    void appendDescription(const std::string& text) override;
    float getVersion() const override { return m_version; }

    const ColorTransformPtr& getTransform() const { return m_transform; }

private:
    void setId(const std::string& id);
    /// Throws 0x3020007 when the value is empty.
    void checkNotEmpty(const char* word, const char* value) const;
    float parseVersion(const char* text) const;

    ColorTransformPtr m_transform;
    float m_version;
};

} // namespace Color::Xml::Reader
