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

/// Reads a transform from a file; the extension decides which readers are tried. Fails with 0x6030001 when path is
/// null, 0x3060003 when there is no such file, 0x3060002 when it is a directory, 0x3060001 when no reader takes files
/// of its extension, and with what the reader finds wrong in the file.
MORVANE_API MorvaneStatus loadColorTransform(const char* path, TransformPtr& result);

/// Reads a transform from the text of a ctf document. Fails with 0x6030001 when text is null, and with what is wrong in
/// the document. Relative references have no base.
MORVANE_API MorvaneStatus loadColorTransformFromBuffer(const char* text, TransformPtr& result);

/// True when a reader takes files of this extension. The file itself need not exist. False for null.
MORVANE_API bool isFileSupported(const char* path);

/// Calls the callback once for each extension that can be read.
MORVANE_API MorvaneStatus getSupportedFileExtensions(SupportedExtensionsCallBack& callback);

/// The extension of the library's own format, without its dot: "ctf". A constant text.
MORVANE_API const char* getColorTransformFileExtension();

} // namespace Morvane_2015_1_42
