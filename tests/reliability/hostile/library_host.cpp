// A host on the C interface of libse_host: opens the engine that is named, sends it sound, edits and reads its settings, and
// shows what came out. Each call that fails shows its reason, and the host goes on as far as it can.
#include <cstdio>
#include <string>

#include "host/se_host.h"

namespace {

constexpr int kBlocks = 100;
constexpr size_t kWhySize = 300;

bool tell(const char* call, se_host_status_t status, const char* why) {
    if (status != SE_HOST_OK)
        std::fprintf(stderr, "library_host: %s: %s: %s\n", call, se_host_status_text(status), why);
    return status == SE_HOST_OK;
}

se_host_status_t sendBlocks(se_host_t* host) {
    static int16_t captured[SE_HOST_BLOCK * 8], far_end[SE_HOST_BLOCK], mono[SE_HOST_BLOCK];
    se_host_status_t worst = SE_HOST_OK;
    for (int block = 0; block < kBlocks; ++block) {
        const auto status = se_host_process_i16(host, captured, 8, far_end, SE_HOST_BLOCK, mono);
        if (status != SE_HOST_OK) worst = status;
    }
    return worst;
}

void showSettings(se_host_t* host) {
    const size_t count = se_host_setting_count(host);
    for (size_t place = 0; place < count; ++place) {
        se_host_setting_t setting{};
        setting.size = sizeof(setting);
        se_host_setting(host, place, &setting);
        char value[200];
        se_host_get(host, setting.name, value, sizeof(value), nullptr);
        std::printf("%zu %s = %s, %s\n", place, setting.type, value, setting.help);
    }
}

}  // namespace

int main(int /*count*/, char** arguments) {
    se_host_options_t options = SE_HOST_OPTIONS_INIT;
    options.engine = arguments[1];
    se_host_t* host = nullptr;
    char why[kWhySize];
    if (!tell("open", se_host_open(&options, &host, why, kWhySize), why)) return 1;
    bool good = tell("set", se_host_set(host, "int16", "5", why, kWhySize), why);
    good = tell("process", sendBlocks(host), "") && good;
    good = tell("save", se_host_save_tuning(host, "out", why, kWhySize), why) && good;
    showSettings(host);
    char advice[kWhySize];
    se_host_advice(host, advice, kWhySize);
    se_host_close(host);
    return good ? 0 : 1;
}
