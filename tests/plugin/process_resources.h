#pragma once
namespace brimwave::testing {

/// What this process and every library in it hold at the moment.
struct ProcessResources {
    long blocks = 0;  // of the process's heap
    long drawing = 0; // pens, fonts, bitmaps, ... of GDI
    long windows = 0; // of the user-interface thread
    long threads = 0;

    ProcessResources operator-(const ProcessResources& other) const {
        return {blocks - other.blocks, drawing - other.drawing, windows - other.windows,
                threads - other.threads};
    }
};

[[nodiscard]] ProcessResources CountResources(unsigned long uiThread);

} // namespace brimwave::testing
