// allocation_stages STAGE: one stage of a host's life, after which everything that it has set is printed. An
// allocation that fails in it (fail_allocation.cpp) ends in a line on standard error and exit code 1, or in a fatal
// record.
#include <dlfcn.h>

#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "common/properties.h"
#include "tests/reliability/support/sound.h"
#include "webrtc_common/se_wrapper.h"

namespace {

namespace se = quill::media::se_wrapper;
using quill::PropertyNode;
using quill::PropertyNodePtr;

void failFromHere() {
    using Mark = void (*)();
    if (const auto mark = reinterpret_cast<Mark>(::dlsym(RTLD_DEFAULT, "fail_allocation_from_here"))) mark();
}

void printMeta(const PropertyNodePtr& node, const char* name) {
    std::string text;
    if (node->findMeta(name, text)) std::printf("  %s: %s\n", name, text.c_str());
}

void print(const PropertyNodePtr& node) {
    const quill::PropertyValue value = node->value();
    std::printf("%s: %s\n", node->getFullName().c_str(), value.empty() ? "" : value.toString().c_str());
    for (const char* const name : {"help", "read_only", "se_diag"}) printMeta(node, name);
    for (const PropertyNodePtr& child : node->children()) print(child);
}

PropertyNodePtr makeTree() {
    PropertyNodePtr root = PropertyNode::createRoot();
    quill::initStaticProperties(root);
    root->getNode("transfer_large_arrays", true)->set<bool>(true);
    return root;
}

void printTable() {
    for (std::size_t row = 0; row < se::kNumEngineRows; ++row) std::printf("%d", se::isEngineRowPresent(row));
    std::printf("\n%s %d %d %d %d\n", se::MMIfGetVersionString(), se::g_diag_gain,
                se::g_diag_echo_safety_factor, *se::VCMul_i16_FcnHook == se::vcmul_i16,
                *se::FwdDft_FcnHook == se::fwdFFT);
}

void process(int blocks) {
    reliability::Sound sound;
    reliability::Checksum checksum;
    se::Filter filter(se::kHighPass600Hz);
    for (int i = 0; i < blocks; ++i) {
        reliability::Sound::Block far_end, played, out;
        int16_t interleaved[8 * se::BLOCK_SIZE];
        sound.next(8, far_end, interleaved);
        se::RcvIfProcessReceivePath(far_end, played);
        se::processBlock(8, interleaved, se::BLOCK_SIZE, out, true);
        filter.filterBlock(out, out, 1.0f);
        checksum.add(out, se::BLOCK_SIZE);
    }
    std::printf("%016" PRIx64 "\n", checksum.value());
}

// A user's edit of everything that is a number.
void editAll(const PropertyNodePtr& node) {
    for (const PropertyNodePtr& child : node->children()) {
        if (!child->setFromText("1", nullptr)) child->setFromText("1.5", nullptr);
        editAll(child);
    }
}

int run(const std::string& stage) {
    if (stage == "tree") {
        failFromHere();
        const PropertyNodePtr root = makeTree();
        print(root);
        return 0;
    }
    const PropertyNodePtr root = makeTree();
    if (stage == "loading") failFromHere();
    se::initSignalEssence();
    se::versionSpecificSettings();
    if (stage == "loading") {
        printTable();
        print(root);
        return 0;
    }
    if (stage == "publishing") failFromHere();
    se::readSignalEssenceDiags(root);
    if (stage == "applying") {
        editAll(root->getNode("diags", false));
        failFromHere();
        se::writeSignalEssenceDiags(root);
        se::readSignalEssenceDiags(root);
    }
    if (stage == "process") {
        failFromHere();
        process(200);
    }
    print(root);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: allocation_stages tree|loading|publishing|applying|process\n", stderr);
        return 2;
    }
    try {
        const int status = run(argv[1]);
        return std::fflush(stdout) == 0 ? status : 1;
    } catch (const std::bad_alloc&) {
        std::fputs("allocation_stages: out of memory\n", stderr);
        return 1;
    }
}
