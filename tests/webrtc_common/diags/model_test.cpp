// Random sequences of engine changes, edits and passes, compared with a small model after each step. The
// first failing sequence is printed. Short ones are tried first.
#include <memory>
#include <random>

#include "tests/webrtc_common/diags/bridge.h"
#include "tests/webrtc_common/diags/bridge_model.h"

using namespace quill::test;

namespace {

enum Action { kEngineMoves, kUserEdits, kPublish, kApply, kNumActions };

struct Step {
    Action action;
    int type;  // of the diagnostic
    int pick;  // of the value
};

// clang-format off
constexpr long long kIntegers[] = {
    0, 1, -1, 5, 7,
    32767, -32768, 32768, 65535, 65541,
    INT32_MAX, INT32_MIN, 1LL << 31, UINT32_MAX,
    (1LL << 32) + 5, 5000000000, (1LL << 32) + INT32_MAX,
    1LL << 39, -(1LL << 39), (1LL << 40) - 1,
};
// clang-format on
constexpr const char* kFloats[] = {"0.000000", "-0.000000", "1.000000", "0.500000", "nan", "inf", "-inf"};

constexpr IntegerRange kInt{32, true};
constexpr IntegerRange kLong{64, true};

// An integer as the engine's type stores it.
IntegerRange rangeOf(int type) {
    switch (type) {
        case kInt16:
            return {16, true};
        case kUInt16:
            return {16, false};
        case kUInt32:
            return {32, false};
        case kInt40:
        case kUInt40:
            return kLong;
        default:
            return kInt;
    }
}

std::unique_ptr<DiagModel> makeModel(int type) {
    if (type == kFloat32) return std::make_unique<FloatModel>();
    return std::make_unique<IntegerModel>(rangeOf(type), type == kUInt32 ? kLong : kInt, type == kEnum);
}

class RandomSequence : public Bridge {
  protected:
    RandomSequence() {
        engine->set_recording(false);
        for (int type = kInt16; type <= kEnum; ++type) add(type, nameOf(type).c_str());
    }
    // Random edits cause failed conversions; other tests cover those.
    void TearDown() override {}

    static std::string nameOf(int type) { return "type_" + std::to_string(type); }
    static int indexOf(int type) { return type - 1; }

    // Runs the steps against a fresh tree. result: what differs first, empty when nothing does.
    std::string difference(const std::vector<Step>& steps) {
        start();
        for (const Step& step : steps) {
            take(step);
            for (int type = kInt16; type <= kEnum; ++type) {
                const std::string expected = models_[type]->state();
                const std::string found = state(type);
                if (found != expected) return nameOf(type) + ": expected " + expected + "; found " + found;
            }
        }
        return {};
    }

    static std::string described(const std::vector<Step>& steps) {
        static constexpr const char* kWords[] = {"engine moves", "user edits", "publish", "apply"};
        std::string text;
        for (const Step& step : steps) {
            text += std::string("  ") + kWords[step.action];
            if (step.action < kPublish) text += " " + nameOf(step.type) + " to " + pickedText(step);
            text += "\n";
        }
        return text;
    }

  private:
    void start() {
        root = quill::PropertyNode::createRoot();
        for (int type = kInt16; type <= kEnum; ++type) {
            models_[type] = makeModel(type);
            engine->set_integer(indexOf(type), 0);
            engine->set_real(indexOf(type), 0);
        }
    }

    static long long pickedInteger(const Step& step) {
        return kIntegers[static_cast<std::size_t>(step.pick) % std::size(kIntegers)];
    }
    static std::string pickedText(const Step& step) {
        if (step.type != kFloat32) return std::to_string(pickedInteger(step));
        return kFloats[static_cast<std::size_t>(step.pick) % std::size(kFloats)];
    }

    void take(const Step& step) {
        switch (step.action) {
            case kEngineMoves:
                moveEngine(step);
                models_[step.type]->engineMoves(pickedText(step));
                break;
            case kUserEdits:
                edit(step);
                models_[step.type]->userEdits(sameZero(pickedText(step)));
                break;
            case kPublish:
                publish();
                for (int type = kInt16; type <= kEnum; ++type) models_[type]->publish();
                break;
            default:
                apply();
                for (int type = kInt16; type <= kEnum; ++type) models_[type]->apply();
        }
    }

    void moveEngine(const Step& step) {
        if (step.type == kFloat32) {
            engine->set_real(indexOf(step.type), FloatModel::value(pickedText(step)));
        } else {
            engine->set_integer(indexOf(step.type), pickedInteger(step));
        }
    }

    static std::string sameZero(const std::string& text) { return text == "-0.000000" ? "0.000000" : text; }

    // Sets a text or a number; the result must be the same.
    void edit(const Step& step) {
        const auto edited = node(nameOf(step.type));
        if (step.pick % 2 == 0) {
            edited->set<std::string>(pickedText(step));
        } else if (step.type == kFloat32) {
            edited->set<float>(FloatModel::value(pickedText(step)));
        } else {
            edited->set<long>(pickedInteger(step));
        }
    }

    std::string state(int type) {
        const int index = indexOf(type);
        std::string held = FloatModel::text(engine->real(index));
        if (type != kFloat32) held = std::to_string(rangeOf(type).cut(engine->integer(index)));
        const auto found = root->getNode(path(nameOf(type)), false);
        std::string node = "nothing", mark = "nothing", help;
        if (found != nullptr) {
            const quill::PropertyNodeData::SharedDataLock lock(found.get(), nullptr);
            if (!lock->value.empty()) node = sameZero(lock->value.toString());
            if (const auto* const entry = lock->findMeta("se_diag")) mark = sameZero(entry->toString());
            if (lock->findMeta("help") != nullptr) help = ", help";
        }
        return "engine " + held + ", mark " + mark + ", node " + node + help;
    }

    std::unique_ptr<DiagModel> models_[kEnum + 1];
};

std::vector<Step> randomSteps(std::mt19937& random, std::size_t length) {
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    std::vector<Step> steps(length);
    for (Step& step : steps) step = {static_cast<Action>(below(kNumActions)), 1 + below(kEnum), below(1000)};
    return steps;
}

TEST_F(RandomSequence, AgreesWithTheModel) {
    std::mt19937 random(1);
    for (std::size_t length = 1; length <= 12; ++length) {
        for (int repeat = 0; repeat < 400; ++repeat) {
            const std::vector<Step> steps = randomSteps(random, length);
            const std::string what = difference(steps);
            ASSERT_EQ("", what) << "after\n" << described(steps);
        }
    }
}

// One diagnostic and few values: all combinations of node, mark and engine occur.
TEST_F(RandomSequence, OfOneDiagnosticAgreesWithTheModel) {
    std::mt19937 random(2);
    for (int type = kInt16; type <= kEnum; ++type) {
        for (std::size_t length = 2; length <= 16; length += 2) {
            for (int repeat = 0; repeat < 60; ++repeat) {
                std::vector<Step> steps = randomSteps(random, length);
                for (Step& step : steps) {
                    step.type = type;
                    step.pick %= 8;
                }
                const std::string what = difference(steps);
                ASSERT_EQ("", what) << "after\n" << described(steps);
            }
        }
    }
}

TEST_F(RandomSequence, OfManyStepsAgreesWithTheModel) {
    std::mt19937 random(3);
    ASSERT_EQ("", difference(randomSteps(random, 20'000)));
}

}  // namespace
