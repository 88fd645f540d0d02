#pragma once

/// The first field of every log message: the failing subject, words joined by colons.
namespace Color::LogCategory {

constexpr const char* MORVANE_CACHE = "COLOR:MORVANE:CACHE";
constexpr const char* MORVANE_CATALOG = "COLOR:MORVANE:CATALOG";
constexpr const char* MORVANE_COLOR = "COLOR:MORVANE:COLOR";
constexpr const char* MORVANE_PATH = "COLOR:MORVANE:PATH";
constexpr const char* MORVANE_PREFS = "COLOR:MORVANE:PREFS";
constexpr const char* RENDERER_ALL = "COLOR:RENDERER:ALL";
constexpr const char* RENDERER_CPU = "COLOR:RENDERER:CPU";
constexpr const char* RENDERER_GPU = "COLOR:RENDERER:GPU";
constexpr const char* RENDERER_OCIO = "COLOR:RENDERER:OCIO";
constexpr const char* TEMPLATE_ALL = "COLOR:TEMPLATE:ALL";
constexpr const char* TEMPLATE_OCIO = "COLOR:TEMPLATE:OCIO";
constexpr const char* TRANSFORM_ALL = "COLOR:TRANSFORM:ALL";
constexpr const char* TRANSFORM_CDL = "COLOR:TRANSFORM:CDL";
constexpr const char* TRANSFORM_EXPOSURE_CONTRAST = "COLOR:TRANSFORM:EXPOSURE_CONTRAST";
constexpr const char* TRANSFORM_FUNCTION = "COLOR:TRANSFORM:FUNCTION";
constexpr const char* TRANSFORM_GAMMA = "COLOR:TRANSFORM:GAMMA";
constexpr const char* TRANSFORM_GAMUT_MAP = "COLOR:TRANSFORM:GAMUT_MAP";
constexpr const char* TRANSFORM_HUE_VECTOR = "COLOR:TRANSFORM:HUE_VECTOR";
constexpr const char* TRANSFORM_LOG = "COLOR:TRANSFORM:LOG";
constexpr const char* TRANSFORM_LUT_1D = "COLOR:TRANSFORM:LUT_1D";
constexpr const char* TRANSFORM_LUT_3D = "COLOR:TRANSFORM:LUT_3D";
constexpr const char* TRANSFORM_MATRIX = "COLOR:TRANSFORM:MATRIX";
constexpr const char* TRANSFORM_METADATA = "COLOR:TRANSFORM:METADATA";
constexpr const char* TRANSFORM_OPLIST = "COLOR:TRANSFORM:OPLIST";
constexpr const char* TRANSFORM_RANGE = "COLOR:TRANSFORM:RANGE";
constexpr const char* TRANSFORM_REFERENCE = "COLOR:TRANSFORM:REFERENCE";
constexpr const char* UTILS_ALL = "COLOR:UTILS:ALL";
constexpr const char* UTILS_DYNAMIC_PROP = "COLOR:UTILS:DYNAMIC_PROP";
constexpr const char* UTILS_PREFERENCES = "COLOR:UTILS:PREFERENCES";
constexpr const char* XML_ALL = "COLOR:XML:ALL";
constexpr const char* XML_CATALOG_MANAGER = "COLOR:XML:CATALOG_MANAGER";
constexpr const char* XML_HALVORN_1D_READER = "COLOR:XML:HALVORN_1D_READER";
constexpr const char* XML_HALVORN_3D_READER = "COLOR:XML:HALVORN_3D_READER";
constexpr const char* XML_ICC_READER = "COLOR:XML:ICC_READER";
constexpr const char* XML_IO_READER = "COLOR:XML:IO_READER";
constexpr const char* XML_OCIO_READER = "COLOR:XML:OCIO_READER";
constexpr const char* XML_PREFS_READER = "COLOR:XML:PREFS_READER";
constexpr const char* XML_READER = "COLOR:XML:READER";
constexpr const char* XML_RESOLVER = "COLOR:XML:RESOLVER";
constexpr const char* XML_WRITER = "COLOR:XML:WRITER";

} // namespace Color::LogCategory
