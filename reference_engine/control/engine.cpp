#include "reference_engine/control/engine.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "reference_engine/audio/geometry.h"
#include "reference_engine/audio/meters.h"
#include "reference_engine/control/array_file.h"

namespace reference_engine {

Settings g_settings;
Readings g_readings;
Engine g_engine;

namespace {

uint64_t meanEnergyOf(const MicrophoneBlock& block) {
    uint64_t energy = 0;
    for (const auto& microphone : block) energy += energyOf(microphone);
    return energy / kMicrophones;
}

void exchange(MicrophoneBlock& block, int a, int b) {
    if (a != b) std::swap_ranges(block[a], block[a] + kBlock, block[b]);
}

}  // namespace

void Engine::init() {
    g_settings = Settings{};
    g_readings = Readings{};
    g_readings.array_source = placeArray();
    for (int d = 0; d < kLocations; ++d) {
        g_readings.azimuth_deg[d] = static_cast<uint16_t>(360 * d / kLocations);
    }
    g_readings.echo_tail_ms = kEchoTaps * 1000 / kSampleRate;
    // What takes long to design comes first, so that the first block finds the state of the others in the caches.
    beam_former_.init();
    search_.init();
    prediction_.init();
    look_.init();
    faults_.init();
    diffuseness_.init();
    echo_canceller_.init();
    residual_echo_.init();
    spectra_.init();
    noise_reduction_.init();
    output_.init();
    high_pass_.init();
    receive_path_.init();
    noise_test_.init(&g_readings.noise_test);
    reported_location_ = -1;
    ready_ = true;
}

void Engine::processMicrophones(const int16_t* centre, const int16_t* circle, int16_t* out) {
    if (!ready_) {
        std::fill(out, out + kBlock, int16_t{0});
        return;
    }
    MicrophoneBlock microphones;
    std::copy(centre, centre + kBlock, microphones[0]);
    std::copy(circle, circle + (kMicrophones - 1) * kBlock, microphones[1]);
    noise_test_.process(microphones, g_settings.noise_test_blocks, &g_readings.noise_test);

    MicrophoneBlock filtered, clean;
    high_pass_.process(microphones, filtered);
    faults_.update(filtered);
    prediction_.setFaults(faults_);
    cancelEcho(filtered, clean);
    search(clean);

    int16_t beam[kBlock], reduced[kBlock];
    const bool mostly_echo = mostlyEcho();
    beam_former_.process(clean, look_.location(), !mostly_echo, mostly_echo ? 0 : mostSharpness(), beam);
    const int16_t* selected = g_settings.output_source == kCentreMicrophone ? beam_former_.centre() : beam;
    noise_reduction_.process(selected, residual_echo_.framePower(), diffuseness_.value(), g_settings,
                             reduced);
    output_.play(reduced, look_.soundFromOutside(), g_settings, g_readings.sample_clock, out);
    report(microphones, out);
}

void Engine::processReceivePath(const int16_t* in, int16_t* out) {
    if (!ready_) {
        std::copy(in, in + kBlock, out);
        return;
    }
    receive_path_.process(in, out, g_settings.receive_gain_q10);
    g_readings.far_end_energy = energyOf(receive_path_.played());
}

void Engine::startNoiseTest() {
    if (!ready_) return;
    noise_test_.start();
    g_readings.noise_test_state = noise_test_.state();
}

// Predictions replace faulty microphones after the canceller, in its input too, as the difference is the echo: it would have
// to learn the path of a microphone that appears.
void Engine::cancelEcho(MicrophoneBlock& in, MicrophoneBlock& out) {
    int16_t far_end[kBlock];
    high_pass_.processFarEnd(receive_path_.played(), far_end);
    receive_path_.endBlock();
    // The first microphone tells the canceller the delay, the clocks and changes of the path.
    const int first = faults_.firstWorking();
    exchange(in, 0, first);
    echo_canceller_.process(far_end, in, out);
    exchange(in, 0, first);
    exchange(out, 0, first);
    g_readings.echo_enhancement_db = echo_canceller_.enhancementDb();
    std::copy(std::begin(echo_canceller_.pathEnergy()), std::end(echo_canceller_.pathEnergy()),
              g_readings.echo_path_energy);
    g_readings.echo_delay_ms = echo_canceller_.delayMs();
    g_readings.echo_drift_ppm = echo_canceller_.driftPpm();
    if (g_settings.aec_bypass != 0) std::copy(in[0], in[0] + kMicrophones * kBlock, out[0]);
    prediction_.replace(in);
    prediction_.replace(out);
    spectra_.update(in, out);
    const float sharpness = g_settings.output_source == kBeam ? beam_former_.sharpness() : 0;
    residual_echo_.update(spectra_, echo_canceller_.residual(), echo_canceller_.unknownShare(), sharpness);
    diffuseness_.update(spectra_);
}

void Engine::search(const MicrophoneBlock& block) {
    if (g_settings.restart_search != 0) {
        search_.restart();
        g_settings.restart_search = 0;
    }
    if (echo_canceller_.active() && !faults_.faulty(0)) {  // the paths are in the order of the microphones
        search_.followLoudspeaker(echo_canceller_.firstPaths(), echo_canceller_.unknownShare());
    }
    search_.update(spectra_, residual_echo_.power(), meanEnergyOf(block), g_settings.search_gate_energy);
    look_.update(search_, g_settings);
}

// Such blocks get robust weights, as residual echo differs between the microphones, and do not decide about the others.
bool Engine::mostlyEcho() const {
    if (g_settings.aec_bypass != 0) return false;  // the echo is a sound as any other
    float echo = 0, all = 0;
    for (int k = 0; k < MicrophoneSpectra::kBins; ++k) {
        echo += residual_echo_.power()[k];
        all += spectra_.meanPower(k);
    }
    return echo > all / 2;
}

// The prediction of a faulty microphone has errors, which sharp weights raise.
float Engine::mostSharpness() const {
    const float most = static_cast<float>(g_settings.most_sharpness_q10) / 1024;
    return faults_.any() ? most / 2 : most;
}

void Engine::reportSteering(int location) {
    for (int m = 0; m < kMicrophones; ++m) {
        g_readings.steering_delay_ns[kChannelOf[m] - 1] =
            static_cast<int32_t>(std::lround(leadOf(m, azimuthOf(location)) * 1e9));
    }
    reported_location_ = location;
}

void Engine::report(const MicrophoneBlock& microphones, const int16_t* out) {
    const int location = look_.location();
    meterMicrophones(microphones, &g_readings);
    for (int m = 0; m < kMicrophones; ++m) {
        g_readings.microphone_faulty[kChannelOf[m] - 1] = faults_.faulty(m) ? 1 : 0;
    }
    g_readings.sharpness = beam_former_.sharpness();
    meterBeams(beam_former_.beams(), beam_former_.centre(), &g_readings);
    g_readings.location = static_cast<uint16_t>(location);
    g_readings.look_azimuth_deg = g_readings.azimuth_deg[location];
    g_readings.confidence = look_.confidence();
    std::copy(std::begin(search_.response()), std::end(search_.response()), g_readings.response);
    ++g_readings.blocks_at_location[location];
    if (location != reported_location_) reportSteering(location);
    std::copy(out, out + kBlock, g_readings.output_block);
    g_readings.output_dbfs = dbfsOf(energyOf(out));
    g_readings.output_correlation = correlationOf(out, beam_former_.centre());
    g_readings.noise_test_state = noise_test_.state();
    g_readings.sample_clock += kBlock;
    ++g_readings.blocks;
}

}  // namespace reference_engine
