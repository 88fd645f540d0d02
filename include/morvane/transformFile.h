#pragma once

#include "morvane/export.h"
#include "morvane/status.h"
#include "morvane/transform.h"

namespace Morvane_2015_1_42 {

/// Receives the file formats that can be read. Both texts are valid during the call only.
class MORVANE_API SupportedExtensionsCallBack
{
public:
    SupportedExtensionsCallBack();
    SupportedExtensionsCallBack(const SupportedExtensionsCallBack& other);
    SupportedExtensionsCallBack& operator=(const SupportedExtensionsCallBack& other);
    virtual ~SupportedExtensionsCallBack();
    /// \param extension without its dot
    virtual void addExtension(const char* extension, const char* description) = 0;
};

/// Receives the text of a ctf document piece by piece.
class MORVANE_API TransformWriterCallback
{
public:
    TransformWriterCallback();
    TransformWriterCallback(const TransformWriterCallback& other);
    TransformWriterCallback& operator=(const TransformWriterCallback& other);
    virtual ~TransformWriterCallback();
    /// Called with one block after the other, of whatever sizes. The text is not terminated and valid during the call
    /// only. An exception thrown here ends the save; it passes through to the host, and no more calls follow.
    virtual void write(const char* text, unsigned length) = 0;
};

/// Reads a transform from a file; the extension decides which readers are tried. Fails with 0x6030001 when path is
/// null, 0x3060003 when there is no such file, 0x3060002 when it is a directory, 0x3060001 when no reader takes files
/// of its extension, with what the reader finds wrong in the file and, when it refers to aliases, with what loading the
/// preferences fails with. Files that it refers to are read by finalize().
MORVANE_API MorvaneStatus loadColorTransform(const char* path, TransformPtr& result);

/// Reads a transform from the text of a ctf document. Fails with 0x6030001 when text is null, and with what is wrong in
/// the document. No file is the base of its relative references.
MORVANE_API MorvaneStatus loadColorTransformFromBuffer(const char* text, TransformPtr& result);

/// Writes the transform to a ctf file, whatever the extension. An existing file is written over, with overwrite false
/// too. References are written as references, resolved or not. Fails with 0x6030001 when path is null, 0x3030001 when
/// the transform is null or not one of the library's own, 0x3010002 when it is not valid; with 0x3030003 when an
/// existing file cannot be written to, 0x3030004 when there is no such directory, 0x3030002 when no file can be made in
/// it; and with 0x3060004 when a write fails, on a full disk for example. The file then holds what was written so far.
///
/// Numbers of a matrix, and of a LUT with the output depth 32f, keep eight significant digits; those of a LUT with the
/// output depth 16f five, which tells all halfs apart; exposure and contrast keep all bits, and other numbers six
/// digits.
MORVANE_API MorvaneStatus saveColorTransform(const char* path, bool overwrite, const TransformPtr& transform);

/// Writes the transform as the text of a ctf document to the callback. Fails with 0x3030001 when the transform is null
/// or not one of the library's own, and 0x3010002 when it is not valid.
MORVANE_API MorvaneStatus saveColorTransformToBuffer(TransformWriterCallback& callback, const TransformPtr& transform);

/// True when a reader takes files of this extension. The file itself need not exist. False for null.
MORVANE_API bool isFileSupported(const char* path);

/// Calls the callback once for each extension that can be read.
MORVANE_API MorvaneStatus getSupportedFileExtensions(SupportedExtensionsCallBack& callback);

/// The extension of the library's own format, without its dot: "ctf". A constant text.
MORVANE_API const char* getColorTransformFileExtension();

} // namespace Morvane_2015_1_42
