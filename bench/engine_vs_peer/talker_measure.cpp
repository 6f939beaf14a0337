#include "bench/engine_vs_peer/talker_measure.h"

namespace engine_vs_peer {
namespace {

template <class Value>
Figure both(const char* name, const char* unit, const Target& target, const Value& value) {
    return {name, unit, target, {value(kEngine), value(kPeer)}};
}

}  // namespace

Figure TalkerMeasure::gain(const char* name, const Target& target, const Spans& spans) const {
    const double before = talkerFigures(direct(), recording_.scene.mixture()[0], 0, spans).sdr_db;
    return both(name, "dB", target,
                [&](System s) { return talkerFigures(direct(), out(s), lag(s), spans).sdr_db - before; });
}

double TalkerMeasure::shareOf(System system, const Spans& spans) const {
    return talkerFigures(direct(), out(system), lag(system), spans).share /
           talkerFigures(direct(), recording_.scene.talker[0], 0, spans).share;
}

Figure TalkerMeasure::level(const char* name, const Target& target, const Spans& spans) const {
    return both(name, "dB", target, [&](System s) {
        const double share = shareOf(s, spans);
        return se_scene::decibelsOfPower(share * share);
    });
}

Figure TalkerMeasure::share(const char* name, const Target& target, const Spans& spans) const {
    return both(name, "", target, [&](System s) { return shareOf(s, spans); });
}

Figure TalkerMeasure::loss(const char* name, const Target& target, const Spans& spans) const {
    const Row microphone = recording_.scene.mixture()[0];
    return both(name, "dB", target, [&](System s) { return lossDb(microphone, out(s), lag(s), spans); });
}

Figure TalkerMeasure::understood() const {
    return both("STOI", "", {Aim::kNotBelowPeer},
                [&](System s) { return intelligibility(direct(), out(s), lag(s), span_); });
}

Figure TalkerMeasure::delay() const {
    return both("delay from microphone to output", "ms", {Aim::kAtMost, 25},
                [&](System s) { return lag(s) * 1000 / se_scene::kSampleRate; });
}

std::vector<Figure> TalkerMeasure::usual(const Target& gain_target) const {
    return {gain("SI-SDR gain", gain_target, {span_}), level("talker's level", kTalkerLevel, {span_}),
            understood()};
}

}  // namespace engine_vs_peer
