#pragma once

/// Each registers the benchmarks of one family, named "row|column" (see ComparisonTable).
void registerPixelRows();
void registerFinalizeRows();
/// Their table counts numbers where others have pixels.
void registerFileRows();
