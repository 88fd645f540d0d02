#pragma once

#include "xml/correctionRootElt.h"

namespace Color::Xml::Reader {

/// ColorDecisionList: its corrections stand in elements ColorDecision.
class ColorDecisionListElt : public CorrectionRootElt
{
public:
    using CorrectionRootElt::CorrectionRootElt;
};

} // namespace Color::Xml::Reader
