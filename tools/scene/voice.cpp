// The two voices and the order of their sounds.
#include "tools/scene/voice.h"

#include <cmath>

#include "tools/scene/vocal_tract.h"

namespace se_scene {

// Formants of men and of women: Peterson and Barney (1952).
const Voice kTalkerVoice{120,
                         {{{270, 2290, 3010},
                           {390, 1990, 2550},
                           {530, 1840, 2480},
                           {660, 1720, 2410},
                           {730, 1090, 2440},
                           {570, 840, 2410},
                           {440, 1020, 2240},
                           {300, 870, 2240},
                           {640, 1190, 2390},
                           {490, 1350, 1690}}},
                         3400};
const Voice kFarEndVoice{200,
                         {{{310, 2790, 3310},
                           {430, 2480, 3070},
                           {610, 2330, 2990},
                           {860, 2050, 2850},
                           {850, 1220, 2810},
                           {590, 920, 2710},
                           {470, 1160, 2680},
                           {370, 950, 2670},
                           {760, 1400, 2780},
                           {500, 1640, 1960}}},
                         4000};

namespace {

struct Fricative {
    double hertz;
    double bandwidth_hz;
    double strength;
};
constexpr Fricative kFricatives[] = {{5800, 1500, 0.018}, {2900, 900, 0.022}, {4500, 5000, 0.008}};
constexpr Fricative kBursts[] = {{900, 900, 0.02}, {4200, 2000, 0.03}, {1900, 800, 0.025}};
constexpr std::array<double, 3> kNasal = {270, 1200, 2400};

// Writes phone after phone, each beginning with the formants of the one before. No expression draws two
// random numbers, because compilers differ in the order of evaluation.
class Speaker {
  public:
    Speaker(const Voice& voice, Random& random) : voice_(voice), random_(random) {}

    std::vector<Phone> phrase() {
        phones_.clear();
        const size_t syllables = 5 + random_.below(6);
        for (size_t i = 0; i < syllables; ++i) {
            const double done = static_cast<double>(i) / static_cast<double>(syllables);
            phone_.pitch_hz = voice_.pitch_hz * (1.15 - 0.3 * done) * random_.uniform(0.92, 1.08);
            syllable(random_.uniform(0.6, 1.0));
        }
        pause(random_.uniform(0.3, 0.8));
        return phones_;
    }

  private:
    void syllable(double loudness) {
        consonant(loudness);
        phone_.formants_hz = voice_.vowels[random_.below(kVowels)];
        add(random_.uniform(0.10, 0.18), loudness, 0);
        if (random_.uniform() < 0.3) consonant(0.7 * loudness);
    }

    void consonant(double loudness) {
        const double choice = random_.uniform();
        if (choice < 0.3) {
            const Fricative& sound = oneOf(kFricatives);
            fricative(sound, random_.uniform(0.07, 0.12), loudness);
        } else if (choice < 0.6) {
            add(random_.uniform(0.04, 0.07), 0, 0);
            fricative(oneOf(kBursts), 0.015, loudness);
        } else if (choice < 0.85) {
            phone_.formants_hz = kNasal;
            add(random_.uniform(0.05, 0.08), 0.4 * loudness, 0);
        }
    }

    template <size_t count>
    const Fricative& oneOf(const Fricative (&sounds)[count]) {
        return sounds[random_.below(count)];
    }

    void fricative(const Fricative& sound, double seconds, double loudness) {
        phone_.noise_hz = sound.hertz;
        phone_.noise_bandwidth_hz = sound.bandwidth_hz;
        add(seconds, 0, sound.strength * loudness);
    }

    void pause(double seconds) { add(seconds, 0, 0); }

    void add(double seconds, double voicing, double noise) {
        phone_.seconds = seconds;
        phone_.voicing = voicing;
        phone_.noise = noise;
        phones_.push_back(phone_);
    }

    const Voice& voice_;
    Random& random_;
    Phone phone_;
    std::vector<Phone> phones_;
};

}  // namespace

Voice withPitch(Voice voice, double pitch_hz) {
    if (pitch_hz == voice.pitch_hz) return voice;
    const double factor = std::pow(pitch_hz / voice.pitch_hz, 0.3);
    voice.pitch_hz = pitch_hz;
    voice.fourth_formant_hz *= factor;
    for (auto& vowel : voice.vowels) {
        for (double& hertz : vowel) hertz *= factor;
    }
    return voice;
}

std::vector<float> synthesiseSpeech(const Voice& voice, size_t frames, Random& random) {
    Speaker speaker(voice, random);
    VocalTract tract(voice.fourth_formant_hz, random);
    std::vector<float> samples;
    while (samples.size() < frames) {
        for (const Phone& phone : speaker.phrase()) tract.say(phone, samples);
    }
    samples.resize(frames);
    return samples;
}

}  // namespace se_scene
