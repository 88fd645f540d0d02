#pragma once

#include "morvane/bitDepth.h"
#include "morvane/dynamicProperty.h"
#include "morvane/export.h"
#include "morvane/gpuAdaptor.h"
#include "morvane/handle.h"
#include "morvane/pixelFormat.h"
#include "morvane/roi.h"
#include "morvane/status.h"

namespace Morvane_2015_1_42 {

class Transform;
using TransformPtr = Handle<Transform>;

/// A colour transform: an ordered list of colour operators with a name and descriptions. The factories, the file
/// functions and inverse() make them; finalize() binds one to pixel formats; apply() then converts images.
class MORVANE_API Transform
{
public:
    /// Receives the description of a transform: sections, nested, with labelled fields. All texts are valid during the
    /// call only.
    class MORVANE_API ContentCallbacks
    {
    public:
        ContentCallbacks();
        ContentCallbacks(const ContentCallbacks& other);
        ContentCallbacks& operator=(const ContentCallbacks& other);
        virtual ~ContentCallbacks();
        virtual void beginSection(const char* title) = 0;
        virtual void endSection() = 0;
        virtual void addField(const char* label, const char* value) = 0;
    };

    Transform();
    Transform(const Transform& other);
    Transform& operator=(const Transform& other);
    virtual ~Transform();

    /// A new transform with a copy of everything but the finalized state and the GPU adaptor.
    virtual TransformPtr clone() const = 0;

    virtual const char* getId() const = 0;
    /// Fails with 0x2010010 on an empty text.
    virtual MorvaneStatus setId(const char* id) = 0;

    /// The id reduced to letters, digits and underscores: fit for file names and keys.
    virtual const char* getUniqueId() const = 0;
    /// Other characters are dropped. Fails with 0x2010015 on an empty text, with 0x1010006 when nothing remains.
    virtual MorvaneStatus setUniqueId(const char* uniqueId) = 0;

    virtual const char* getName() const = 0;
    virtual void setName(const char* name) = 0;

    /// All descriptions, joined by newlines. The text lies in one buffer per thread and is overwritten by the next call
    /// of this function on any transform.
    virtual const char* getDescription() const = 0;
    /// Replaces all descriptions by this one.
    virtual void setDescription(const char* description) = 0;

    virtual const char* getInputDescriptor() const = 0;
    virtual void setInputDescriptor(const char* descriptor) = 0;
    virtual const char* getOutputDescriptor() const = 0;
    virtual void setOutputDescriptor(const char* descriptor) = 0;

    /// Depth of the first operator's input and of the last one's output. An empty transform makes them throw an
    /// exception that only `catch (...)` can name.
    virtual BitDepth getInputBitDepth() const = 0;
    virtual BitDepth getOutputBitDepth() const = 0;

    /// The formats of the last finalize(), PF_UNKNOWN before. A setter with a new value finalizes again with the other
    /// values unchanged and fails like finalize(); with the present value it does nothing.
    virtual PixelFormat getInputPixelFormat() const = 0;
    virtual MorvaneStatus setInputPixelFormat(PixelFormat format) = 0;
    virtual PixelFormat getOutputPixelFormat() const = 0;
    virtual MorvaneStatus setOutputPixelFormat(PixelFormat format) = 0;
    virtual MorvaneStatus setPixelFormats(PixelFormat in, PixelFormat out) = 0;

    /// Stores a new transform that undoes this one. Fails with 0x2010014 when an operator has no inverse, with
    /// 0x2010008 when the transform is empty. The result may be the handle through which this is called.
    virtual MorvaneStatus inverse(TransformPtr& result) const = 0;
    /// True when this transform was made by inverting one with the other's id. False for a null handle.
    virtual bool isInverseOf(const TransformPtr& other) const = 0;

    virtual bool hasReferences() const = 0;
    virtual bool hasUnresolvedReferences() const = 0;

    /// Describes the transform: a section "Transform" with the fields "Input Descriptor", "Output Descriptor",
    /// "Nickname" (the name), "Inverse Of" where it is set, and "Description" for each description; inside it a section
    /// per operator in order, titled by its type, such as "Matrix". An operator has "Bypass" with the value "true" when
    /// it is bypassed, "Description" for each description, and its parameters:
    ///
    /// - LUT 1D, Inverse LUT 1D: "Interpolation", "Half Domain" and "Raw Halfs" with the value "true" where they are
    ///   set, "Hue Adjustment", "Array Dimension" (the number of entries).
    /// - LUT 3D: "Interpolation", "Array Dimension" (the number of grid points per axis).
    /// - Matrix: "Array Row 1" and so on with the values of a row; "Offsets" when an offset is not 0.
    /// - Range: "Min Input Value", "Min Output Value", "Max Input Value", "Max Output Value", each where it is set.
    /// - Gamma: "Gamma Style", "gamma", for a moncurve style "offset": one value when red, green and blue share it and
    ///   alpha stays as it is, else red, green, blue, and alpha where it does not stay as it is.
    /// - Exposure/Contrast: "E/C Style", "Exposure", "Contrast", "Pivot", as they are at this moment.
    /// - Log: "Log Style", for the two styles that have them "RefWhite", "RefBlack", "Highlight", "Shadow": one value
    ///   when red, green and blue share it, else red, green, blue.
    /// - ASC CDL: "CDL Style", "Slope", "Offset", "Power" with a value each for red, green and blue.
    /// - GamutMap: "Gamut Map Style". HueVector: "Hue Vector Style", "Parameter Style", "Center", "Width", "Amount".
    ///   Function: "Function Style".
    ///
    /// Numbers are the shortest text that reads back to the same value; several are separated by blanks.
    virtual MorvaneStatus describe(ContentCallbacks& callbacks) const = 0;

    /// Sets the value in every operator that has the property, or reads it from the first that has it. Fails with
    /// 0x2010013 when none has it. Takes effect without finalizing again.
    virtual MorvaneStatus setDynamicProperty(const DynamicProperty& property) = 0;
    virtual MorvaneStatus getDynamicProperty(DynamicProperty& property) const = 0;

    /// Stores the adaptor and drops all renderers: finalize again before the next apply().
    virtual void setGPUAdaptor(const GPUAdaptorPtr& adaptor) = 0;
    virtual GPUAdaptorPtr getGPUAdaptor() const = 0;

    /// Converts the pixels of a region, on the calling thread.
    ///
    /// \param source            top left of the source image in the input pixel format
    /// \param sourceStride      bytes from one source row to the next
    /// \param roi               the region, the same in source and destination, and the size of both images
    /// \param destination       top left of the destination image in the output pixel format; may be the source when
    ///                          both formats have the same pixel size and the strides are equal
    /// \param destinationStride bytes from one destination row to the next
    ///
    /// Bytes outside the region are not touched. The offset of the region's first pixel is computed in 32 bits, so a
    /// region must start within 4 GiB of the image's start. Strides are not checked. Fails without touching a pixel:
    /// with 0x6010001 when the transform has no CPU renderer, 0x4010001 when a pointer is null, 0x1010001 when the
    /// region is not wholly inside the image.
    virtual MorvaneStatus apply(const void* source, unsigned sourceStride, const ROI& roi, void* destination,
                                unsigned destinationStride) = 0;

    /// The same with tightly packed rows of the image width.
    virtual MorvaneStatus apply(const void* source, const ROI& roi, void* destination) = 0;

    /// Draws through the GPU adaptor; the three values are handed through to it. Fails with 0x6010001 without a GPU
    /// renderer.
    virtual MorvaneStatus applyGPU(unsigned a, const void* b, const void* c) = 0;
};

extern template class Handle<Transform>;

} // namespace Morvane_2015_1_42
