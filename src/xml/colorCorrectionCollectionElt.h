#pragma once

#include "xml/correctionRootElt.h"

namespace Color::Xml::Reader {

/// ColorCorrectionCollection: holds elements ColorCorrection.
class ColorCorrectionCollectionElt : public CorrectionRootElt
{
public:
    using CorrectionRootElt::CorrectionRootElt;
};

} // namespace Color::Xml::Reader
