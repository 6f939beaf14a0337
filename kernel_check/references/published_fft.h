// The real FFT of another implementation of the same published algorithm: that of the SpeexDSP library, from its
// static archive, with its own tables. Ours gives the same bits.
// Tables are kept for each length until the process ends, for one thread.
#pragma once

namespace quill::test {

// The length, its work array (tables from element n on) and its factors.
struct PublishedTables {
    int n;
    float* wsave;
    int* ifac;
};

// Valid until the process ends.
const PublishedTables& publishedTables(int n);

// In place, n floats, as __ogg_fdrfftf and __ogg_fdrfftb.
void publishedForwardFft(int n, float* r);
void publishedBackwardFft(int n, float* r);

}  // namespace quill::test
