#pragma once

#include "transform/invLut1DOp.h"
#include "xml/arrayMgt.h"
#include "xml/opElt.h"

namespace Color::Xml::Reader {

/// What LUT1D and InverseLUT1D share: their attributes and the array of a curve.
template <class LutOp>
class CurveElt : public TypedOpElt<LutOp>, public ArrayMgt
{
public:
    void start(Attributes attributes) override;
    /// Takes a length and 1 or 3 components.
    FileArray* updateDimension(const Dimensions& dimensions) override;

protected:
    CurveElt(const std::string& name, TransformElt& parent, const ReadContext& context);

    virtual std::string spellSize(uint32_t length, uint32_t numColorComponents) const = 0;

    FileArray& getFileArray() { return m_array; }
    /// Makes the op's array from the values read; one component becomes three equal ones.
    void storeCurves(std::size_t count);

private:
    FileArray m_array;
    uint32_t m_length = 0;
    uint32_t m_numColorComponents = 0;
};

/// LUT1D as files up to version 1.3 have it.
class Lut1DElt : public CurveElt<Lut1DOp>
{
public:
    Lut1DElt(const std::string& name, TransformElt& parent, const ReadContext& context)
        : CurveElt(name, parent, context)
    {}

    void finalize(std::size_t count) override;

protected:
    std::string spellSize(uint32_t length, uint32_t numColorComponents) const override;
};

/// LUT1D from version 1.4 on, which knows hue adjust.
class Lut1DElt_1_4 : public Lut1DElt
{
public:
    using Lut1DElt::Lut1DElt;

    void start(Attributes attributes) override;
};

/// InverseLUT1D.
class InvLut1DElt : public CurveElt<InvLut1DOp>
{
public:
    InvLut1DElt(const std::string& name, TransformElt& parent, const ReadContext& context)
        : CurveElt(name, parent, context)
    {}

    void finalize(std::size_t count) override;

protected:
    std::string spellSize(uint32_t length, uint32_t numColorComponents) const override;
};

} // namespace Color::Xml::Reader
