#include "tools/se_host/sweep/row.h"

#include "tools/se_host/sweep/program.h"

namespace se_host::sweep {
namespace {

// What a library may choose its routines by.
Json processorFeatures() {
    Json features = Json::array();
#define SE_FEATURE(name) \
    if (__builtin_cpu_supports(name)) features.push_back(name)
    SE_FEATURE("ssse3");
    SE_FEATURE("sse4.1");
    SE_FEATURE("avx");
    SE_FEATURE("avx2");
    SE_FEATURE("fma");
    SE_FEATURE("avx512f");
    SE_FEATURE("avx512bw");
    SE_FEATURE("avx512vl");
    SE_FEATURE("avx512vnni");
#undef SE_FEATURE
    return features;
}

Json measuresJson(const Measured& measured) {
    Json json = Json::object();
    for (size_t i = 0; i < measures().size(); ++i) {
        const std::optional<double>& value = measured.values[i];
        json[measures()[i].name] = value ? Json(*value) : Json(nullptr);
    }
    return json;
}

Json rowOf(const Order& order, const Json& error, const Json& measures, const Json& output) {
    return {{"key", order.key},
            {"recording", order.entry.id},
            {"tuning", order.tuning},
            {"labels", order.entry.labels},
            {"status", error.is_null() ? "ok" : "failed"},
            {"error", error},
            {"measures", measures},
            {"output", output},
            {"engine",
             {{"build", order.engine.build}, {"version", order.engine.version}, {"file", order.engine.hash}}},
            {"program", toJson(thisProgram())},
            {"processor", processorFeatures()}};
}

}  // namespace

Json doneRow(const Order& order, const Measured& measured, const std::vector<int16_t>& output) {
    return rowOf(order, nullptr, measuresJson(measured), hashOfSamples(output));
}

Json failedRow(const Order& order, const std::string& error) {
    return rowOf(order, error, nullptr, nullptr);
}

}  // namespace se_host::sweep
