#pragma once

#include "xml/element.h"

#include <memory>
#include <string>
#include <vector>

namespace Color::Xml::Reader {

/// Stands for an element that is not understood, or not allowed where it stands: it is logged and skipped.
class DummyElt : public PlainElt
{
public:
    /// Stands for the parent, which need not exist and need not be a container.
    class DummyParent : public ContainerElt
    {
    public:
        DummyParent(const Element* parent, const ReadContext& context);

        void start(Attributes) override {}
        void end() override {}
        bool isDummy() const override { return true; }
        std::string getIdentifier() const override;
        std::string getTypeName() const override;
        void appendDescription(const std::string&) override {}

    private:
        const Element* m_parent;
    };

    /// Logs the reason at level DEBUG.
    DummyElt(const std::string& name, const Element* parent, const ReadContext& context, const char* reason);
    ~DummyElt() override;

    bool isDummy() const override { return true; }
    void setRawData(std::string_view text, int32_t line) override;

    const std::vector<std::string>& getRawData() const { return m_rawData; }

private:
    DummyElt(const std::string& name, std::unique_ptr<DummyParent> parent, const ReadContext& context,
             const char* reason);

    std::unique_ptr<DummyParent> m_dummyParent;
    std::vector<std::string> m_rawData;
};

} // namespace Color::Xml::Reader
