#pragma once

/// \file
/// The whole interface of Morvane in one include.
///
/// Rules that hold for every function unless its own comment says otherwise:
///
/// - **Errors.** A call that can fail returns a MorvaneStatus, true on success. Output arguments are written on success
///   alone; after a failure they are what they were.
/// - **Text** is UTF-8, zero-terminated. A returned `const char*` belongs to the object that returned it and stays
/// valid
///   until that object changes or is destroyed. Setters take null as the empty text. No number is read or written
///   through the process locale.
/// - **Threads.** Objects have no lock: one thread at a time may change an object. apply() only reads, so any number of
///   threads may apply one finalized transform at once, each to its own region of the destination.
/// - **Numbers.** A sample of depth d runs from 0 to getBitDepthMaxValue(d); parameters are in the scale of their
/// depths.

#include "morvane/basePath.h"
#include "morvane/bitDepth.h"
#include "morvane/dynamicProperty.h"
#include "morvane/finalize.h"
#include "morvane/geometry.h"
#include "morvane/gpuAdaptor.h"
#include "morvane/halfFlags.h"
#include "morvane/mixingSliderUnits.h"
#include "morvane/optimizer.h"
#include "morvane/pixelFormat.h"
#include "morvane/preferenceOrigin.h"
#include "morvane/preferences.h"
#include "morvane/resolveFlags.h"
#include "morvane/roi.h"
#include "morvane/status.h"
#include "morvane/transform.h"
#include "morvane/transformCache.h"
#include "morvane/transformFactory.h"
#include "morvane/transformFile.h"
#include "morvane/transformPathMonitor.h"
#include "morvane/version.h"

/// Hosts write Morvane::finalize and so on; the versioned name keeps two releases apart in one process.
namespace Morvane = Morvane_2015_1_42;
