#pragma once

/// MORVANE_API marks what the shared library exports; everything else in it is hidden.
#if defined(_WIN32)
#if defined(MORVANE_BUILDING)
#define MORVANE_API __declspec(dllexport)
#else
#define MORVANE_API __declspec(dllimport)
#endif
#else
#define MORVANE_API __attribute__((visibility("default")))
#endif
