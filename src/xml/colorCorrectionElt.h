#pragma once

#include "transform/CDLOp.h"
#include "transform/transform.h"
#include "xml/element.h"

#include <vector>

namespace Color::Xml::Reader {

/// ColorCorrection: a transform of one CDL op. Nothing in the file tells the style of the op; the environment variable
/// MORVANE_DEFAULT_CDL_STYLE does where it is set.
class ColorCorrectionElt : public ComplexElt
{
public:
    using Transforms = std::vector<ColorTransformPtr>;

    /// The parent of a root is null. The op takes over the descriptions; the transform is filed in the list when the
    /// element ends. Throws 0x20c0002 when the environment names no style.
    ColorCorrectionElt(const std::string& name, ContainerElt* parent, const Descriptions& descriptions,
                       Transforms& list, const ReadContext& context);
    ~ColorCorrectionElt() override;

    /// Throws 0x3020007 when there is an id without a value.
    void start(Attributes attributes) override;
    /// Throws as the op's validation does.
    void end() override;
    void appendDescription(const std::string& text) override;

    CDLOp& getOp() { return *m_op; }

private:
    ColorTransformPtr m_transform;
    CDLOp* m_op; ///< the transform's
    Transforms& m_list;
};

} // namespace Color::Xml::Reader
