// Short-time objective intelligibility: how well a listener would understand processed speech, from its comparison
// with the clean speech (Taal, Hendriks, Heusdens, Jensen: "An algorithm for intelligibility prediction of
// time-frequency weighted noisy speech", IEEE Transactions on Audio, Speech, and Language Processing 19, 2011).
// Threads: any; nothing is shared.
#pragma once

#include <vector>

namespace stoi {

// in: the two signals at any level, one in time with the other, of one length. out: 1 for the same signal, about 0
// where nothing of the speech is left. Pauses of the clean speech do not count. fails: std::invalid_argument when the
// lengths differ, or when the clean signal has less than 0.4 s of sound.
double intelligibility(const std::vector<float>& clean, const std::vector<float>& processed,
                       double sample_rate);

}  // namespace stoi
