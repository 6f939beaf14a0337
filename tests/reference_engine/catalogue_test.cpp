// The catalogue as a whole: its contents, queries and refused writes.
#include <cmath>
#include <limits>
#include <set>
#include <string>
#include <tuple>

#include "tests/reference_engine/engine_under_test.h"

using namespace reference_engine_test;

namespace {

class Catalogue : public EngineTest {
  protected:
    int size() const { return engine.SEDiagGetNumDiags(); }

    void* arrayOf(int index, SEDiagType_t type) const {
        switch (type) {
            case kSEDiagInt16:
                return engine.SEDiagGetInt16Array(index);
            case kSEDiagInt32:
                return engine.SEDiagGetInt32Array(index);
            case kSEDiagUInt16:
                return engine.SEDiagGetUInt16Array(index);
            case kSEDiagUInt32:
                return engine.SEDiagGetUInt32Array(index);
            case kSEDiagInt40:
                return engine.SEDiagGetInt40Array(index);
            case kSEDiagUInt40:
                return engine.SEDiagGetUInt40Array(index);
            case kSEDiagFloat32:
                return engine.SEDiagGetFloat32Array(index);
            default:
                return nullptr;
        }
    }

    // Reads a diagnostic of any type, as a double.
    double valueOf(int index) const {
        switch (engine.SEDiagGetType(index)) {
            case kSEDiagInt16:
                return engine.SEDiagGetInt16(index);
            case kSEDiagInt32:
                return engine.SEDiagGetInt32(index);
            case kSEDiagUInt16:
                return engine.SEDiagGetUInt16(index);
            case kSEDiagUInt32:
                return engine.SEDiagGetUInt32(index);
            case kSEDiagInt40:
                return static_cast<double>(engine.SEDiagGetInt40(index));
            case kSEDiagUInt40:
                return static_cast<double>(engine.SEDiagGetUInt40(index));
            case kSEDiagFloat32:
                return double{engine.SEDiagGetFloat32(index)};
            default:
                return engine.SEDiagGetEnumAsInt(index);
        }
    }

    // Writes through every setter; the diagnostic accepts only the setter of its type.
    void write(int index, int value) const {
        engine.SEDiagSetInt16(index, static_cast<int16_t>(value));
        engine.SEDiagSetInt32(index, value);
        engine.SEDiagSetUInt16(index, static_cast<uint16_t>(value));
        engine.SEDiagSetUInt32(index, static_cast<uint32_t>(value));
        engine.SEDiagSetInt40(index, value);
        engine.SEDiagSetUInt40(index, static_cast<uint64_t>(value));
        engine.SEDiagSetFloat32(index, static_cast<float>(value));
        engine.SEDiagSetEnumAsInt(index, value);
    }
};
INSTANTIATE_FOR_EACH_BUILD(Catalogue);

using Kind = std::tuple<SEDiagType_t, bool, bool>;  // type, writable, array

}  // namespace

TEST_P(Catalogue, FindsEveryDiagnosticByItsName) {
    for (int i = 0; i < size(); ++i) EXPECT_EQ(engine.SEDiagGetIndex(engine.SEDiagGetName(i)), i);
}

TEST_P(Catalogue, AnswersAnUnknownNameWithANegativeIndex) {
    EXPECT_LT(engine.SEDiagGetIndex("no_such_thing"), 0);
}

TEST_P(Catalogue, HasWritableValuesOfEveryType) {
    std::set<int> types;
    for (int i = 0; i < size(); ++i) {
        if ((engine.SEDiagGetRW(i) & kSEDiagWrite) != 0) types.insert(engine.SEDiagGetType(i));
    }
    EXPECT_EQ(types, (std::set<int>{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_P(Catalogue, HasReadOnlyValuesOfEveryType) {
    std::set<int> types;
    for (int i = 0; i < size(); ++i) {
        if (engine.SEDiagGetLen(i) == 1 && engine.SEDiagGetRW(i) == kSEDiagRead) {
            types.insert(engine.SEDiagGetType(i));
        }
    }
    EXPECT_EQ(types, (std::set<int>{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_P(Catalogue, HasArraysOfEveryTypeOnBothSidesOfTenElements) {
    std::set<int> small, large;
    for (int i = 0; i < size(); ++i) {
        const int len = engine.SEDiagGetLen(i);
        if (len > 1) (len > 10 ? large : small).insert(engine.SEDiagGetType(i));
    }
    EXPECT_EQ(small, (std::set<int>{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(large, (std::set<int>{1, 2, 3, 4, 5, 6, 7}));
}

TEST_P(Catalogue, HasEveryLevelAndEveryAccess) {
    std::set<int> levels, accesses;
    for (int i = 0; i < size(); ++i) {
        levels.insert(engine.SEDiagGet(i)->level);
        accesses.insert(engine.SEDiagGetRW(i));
    }
    EXPECT_EQ(levels, (std::set<int>{0, 1, 2, 3}));
    EXPECT_EQ(accesses, (std::set<int>{kSEDiagRead, kSEDiagWrite, kSEDiagReadWrite}));
}

TEST_P(Catalogue, HasAHelpTextForEveryDiagnostic) {
    for (int i = 0; i < size(); ++i) EXPECT_STRNE(engine.SEDiagGet(i)->help, "") << engine.SEDiagGetName(i);
}

TEST_P(Catalogue, GivesTheSameInRecordAndQueries) {
    for (int i = 0; i < size(); ++i) {
        const SEDiag_t* record = engine.SEDiagGet(i);
        EXPECT_STREQ(record->name, engine.SEDiagGetName(i));
        EXPECT_EQ(record->type, engine.SEDiagGetType(i));
        EXPECT_EQ(record->len, engine.SEDiagGetLen(i));
        EXPECT_EQ(record->rw, engine.SEDiagGetRW(i));
        if (GetParam() != Build::kBeam) continue;
        EXPECT_EQ(record->level, engine.SEDiagGetLevel(i));
        EXPECT_STREQ(record->help, engine.SEDiagGetHelp(i));
    }
}

TEST_P(Catalogue, HasTheDiagnosticsThatStartUpSets) {
    for (const char* name :
         {receiveGainOf(GetParam()), "senr_echo_safety_factor_q10", "mmfx_bypass_location_search",
          "mmfx_force_location_index", "mmfx_force_location_confidence", "senr_nf_fullband_weight_factor_q10",
          "senr_nf_weight_factor_q10"}) {
        const int index = engine.diag(name);
        EXPECT_LE(engine.SEDiagGetType(index), kSEDiagUInt32) << name;
        EXPECT_EQ(engine.SEDiagGetRW(index), kSEDiagReadWrite) << name;
    }
}

TEST_P(Catalogue, TakesAValueInEveryWritableDiagnostic) {
    for (int i = 0; i < size(); ++i) {
        if ((engine.SEDiagGetRW(i) & kSEDiagWrite) == 0) continue;
        write(i, 1);
        EXPECT_EQ(valueOf(i), 1) << engine.SEDiagGetName(i);
    }
}

TEST_P(Catalogue, ClampsValuesToTheirRange) {
    const int index = engine.diag("mmfx_force_location_index");
    engine.SEDiagSetInt16(index, 12);
    EXPECT_EQ(engine.SEDiagGetInt16(index), 11);
    engine.SEDiagSetInt16(index, -1);
    EXPECT_EQ(engine.SEDiagGetInt16(index), 0);
}

TEST_P(Catalogue, KeepsFortyBitValues) {
    const int index = engine.diag("seout_unmute_at_sample");
    engine.SEDiagSetInt40(index, 549755813887);
    EXPECT_EQ(engine.SEDiagGetInt40(index), 549755813887);
    engine.SEDiagSetInt40(index, -549755813888 - 1);
    EXPECT_EQ(engine.SEDiagGetInt40(index), -549755813888);
}

TEST_P(Catalogue, IgnoresWhatIsNoNumber) {
    const int index = engine.diag("mmfx_rear_rejection_db");
    engine.SEDiagSetFloat32(index, 3);
    engine.SEDiagSetFloat32(index, std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(engine.SEDiagGetFloat32(index), 3);
}

TEST_P(Catalogue, IgnoresANumberWithoutALabel) {
    const int index = engine.diag("mmfx_look_mode");
    engine.SEDiagSetEnumAsInt(index, 2);
    engine.SEDiagSetEnumAsInt(index, 4);
    engine.SEDiagSetEnumAsInt(index, -1);
    EXPECT_EQ(engine.SEDiagGetEnumAsInt(index), 2);
    EXPECT_STREQ(engine.SEDiagGetEnumAsString(index), "Narrow forward");
}

TEST_P(Catalogue, IgnoresWritesToReadOnlyDiagnostics) {
    for (int i = 0; i < size(); ++i) {
        if ((engine.SEDiagGetRW(i) & kSEDiagWrite) != 0) continue;
        const double before = valueOf(i);
        write(i, 12345);
        EXPECT_EQ(valueOf(i), before) << engine.SEDiagGetName(i);
    }
}

TEST_P(Catalogue, IgnoresTheSetterOfAnotherType) {
    const int index = engine.diag("seout_gain_q10");
    engine.SEDiagSetInt16(index, 5);
    engine.SEDiagSetUInt32(index, 5);
    EXPECT_EQ(engine.SEDiagGetInt32(index), 1024);
}

TEST_P(Catalogue, AnswersTheGetterOfAnotherTypeWithZero) {
    const int index = engine.diag("seout_gain_q10");
    EXPECT_EQ(engine.SEDiagGetInt16(index), 0);
    EXPECT_EQ(engine.SEDiagGetFloat32(index), 0);
    EXPECT_EQ(engine.SEDiagGetUInt32Array(index), nullptr);
}

TEST_P(Catalogue, GivesTheElementsOfEveryArray) {
    for (int i = 0; i < size(); ++i) {
        if (engine.SEDiagGetLen(i) > 1) {
            EXPECT_EQ(arrayOf(i, engine.SEDiagGetType(i)), engine.SEDiagGet(i)->value);
        }
    }
}

TEST_P(Catalogue, IsEmptyBeyondItsEnds) {
    for (const int index : {-1, size(), INT32_MAX, INT32_MIN}) {
        write(index, 1);
        EXPECT_STREQ(engine.SEDiagGetName(index), "");
        EXPECT_EQ(engine.SEDiagGetType(index), 0);
        EXPECT_EQ(engine.SEDiagGetLen(index), 0);
        EXPECT_EQ(engine.SEDiagGetRW(index), 0);
        EXPECT_EQ(engine.SEDiagGetInt32(index), 0);
        EXPECT_STREQ(engine.SEDiagGetEnumAsString(index), "");
        EXPECT_STREQ(engine.SEDiagGet(index)->help, "");
    }
}
