// Look direction as chosen by the client: manual and forced locations, sectors, rear rejection.
#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"
#include "tools/scene/scene.h"

using namespace reference_engine_test;

namespace {

class Look : public EngineTest {
  protected:
    const se_scene::MicrophoneRows& talkerAt(double azimuth_deg) {
        se_scene::SceneOptions options;
        options.seconds = 2;
        options.array_radius_m = arrayRadiusOf(GetParam());
        options.talker_azimuth_deg = azimuth_deg;
        rows_ = se_scene::makeScene(options).mixture();
        return rows_;
    }

  private:
    se_scene::MicrophoneRows rows_;
};
INSTANTIATE_FOR_EACH_BUILD(Look);

// The sectors, which only the beam-forming build exports.
class Sector : public Look {};
INSTANTIATE_TEST_SUITE_P(BeamFormingBuild, Sector, testing::Values(Build::kBeam), nameOfParam);

}  // namespace

TEST_P(Look, StaysAtAManualLocation) {
    engine.MMIfSetManualLocation(7, 1234);
    engine.process(talkerAt(60));
    EXPECT_EQ(engine.location(), 7);
    EXPECT_EQ(engine.confidence(), 1234);
}

TEST_P(Look, ClampsAManualLocationToItsRange) {
    engine.MMIfSetManualLocation(100, -5);
    engine.processAlike(Samples(kBlock, 0));
    EXPECT_EQ(engine.location(), 11);
    EXPECT_EQ(engine.confidence(), 0);
    engine.MMIfSetManualLocation(-100, 5);
    engine.processAlike(Samples(kBlock, 0));
    EXPECT_EQ(engine.location(), 0);
}

TEST_P(Look, SearchesAgainAfterAManualLocation) {
    engine.MMIfSetManualLocation(7, 0);
    engine.process(talkerAt(60));
    engine.MMIfSetAutoLocationSearch();
    engine.process(talkerAt(60));
    EXPECT_EQ(engine.location(), 2);
}

TEST_P(Look, TakesTheForcedLocationWhileTheSearchIsBypassed) {
    engine.SEDiagSetUInt16(engine.diag("mmfx_bypass_location_search"), 1);
    engine.SEDiagSetInt16(engine.diag("mmfx_force_location_index"), 3);
    engine.SEDiagSetInt16(engine.diag("mmfx_force_location_confidence"), 32767);
    engine.process(talkerAt(240));
    EXPECT_EQ(engine.location(), 3);
    EXPECT_EQ(engine.confidence(), 32767);
}

TEST_P(Look, ShowsAManualLocationAsAForcedOne) {
    engine.MMIfSetManualLocation(4, 99);
    EXPECT_EQ(engine.SEDiagGetUInt16(engine.diag("mmfx_bypass_location_search")), 1);
    EXPECT_EQ(engine.SEDiagGetInt16(engine.diag("mmfx_force_location_index")), 4);
    EXPECT_EQ(engine.SEDiagGetInt16(engine.diag("mmfx_force_location_confidence")), 99);
}

TEST_P(Look, LowersSoundFromBehindTheBeam) {
    const auto talker = talkerAt(90);
    engine.MMIfSetManualLocation(3, 0);
    const double towards = powerOf(engine.process(talker));
    engine.MMIfInit(0);
    engine.MMIfSetManualLocation(9, 0);
    EXPECT_LT(decibels(powerOf(engine.process(talker)) / towards), -0.7);
}

TEST_P(Look, FollowsAMovingTalker) {
    engine.process(talkerAt(60));
    EXPECT_EQ(engine.location(), 2);
    engine.process(talkerAt(270));
    EXPECT_EQ(engine.location(), 9);
}

// The output lags the beams by the delay of the bypassed noise reduction, which is whole blocks.
TEST_P(Look, OutputsTheBeamOfItsLocation) {
    engine.MMIfSetManualLocation(4, 0);
    engine.MMIfSetNoiseReductionBypass(1);
    const auto noise = whiteNoise(10 * kBlock, -20, 1);
    engine.processAlike(noise);
    const uint64_t* energies = engine.SEDiagGetUInt40Array(engine.diag("mmfx_beam_energy"));
    const double expected = static_cast<double>(energies[4]);
    EXPECT_NE(energies[4], energies[5]);
    static_assert(kReductionDelay == 2 * kBlock);
    const Samples out = engine.processAlike(Samples(2 * kBlock, 0));
    EXPECT_EQ(powerOf(out, kBlock) * kBlock, expected);
}

// The noise repeats itself in each block, and the beams stay as they are, so a level does not depend on the block in which
// it was measured.
TEST_P(Look, ShowsTheLevelOfEveryBeamInTurn) {
    const Samples block = whiteNoise(kBlock, -20, 1);
    const auto energies = [&](int location, int blocks) {
        engine.MMIfInit(0);
        engine.SEDiagSetInt16(engine.diag("mmfx_most_sharpness_q10"), 0);
        engine.MMIfSetManualLocation(location, 0);
        std::vector<Samples> rows(kMicrophones);
        for (size_t m = 0; m < kMicrophones; ++m) {
            for (int b = 0; b < blocks; ++b) rows[m].insert(rows[m].end(), block.begin(), block.end());
            std::rotate(rows[m].begin(), rows[m].begin() + static_cast<ptrdiff_t>(3 * m), rows[m].end());
        }
        engine.process(rows);
        const uint64_t* shown = engine.SEDiagGetUInt40Array(engine.diag("mmfx_beam_energy"));
        return std::vector<uint64_t>(shown, shown + kLocations);
    };
    const std::vector<uint64_t> in_turn = energies(0, 100);
    for (int location = 0; location < kLocations; ++location) {
        const double look = static_cast<double>(energies(location, 100)[static_cast<size_t>(location)]);
        EXPECT_NEAR(static_cast<double>(in_turn[static_cast<size_t>(location)]) / look, 1, 1e-3) << location;
    }
}

TEST_P(Look, FadesFromOneBeamToTheNextWithinABlock) {
    const auto noise = whiteNoise(10 * kBlock, -20, 1);
    const auto from = [&](int first, int second) {
        engine.MMIfInit(0);
        engine.MMIfSetNoiseReductionBypass(1);
        engine.SEDiagSetInt16(engine.diag("mmfx_most_sharpness_q10"), 0);
        engine.MMIfSetManualLocation(first, 0);
        engine.processAlike(noise);
        engine.MMIfSetManualLocation(second, 0);
        const Samples out = engine.processAlike(noise);
        return Samples(out.begin() + kReductionDelay, out.end());
    };
    const Samples front = from(0, 0), side = from(3, 3), turned = from(0, 3);
    EXPECT_NEAR(turned[0], front[0] + (side[0] - front[0]) / 160.0, 1);
    EXPECT_NEAR(turned[79], (side[79] + front[79]) / 2.0, 1);
    EXPECT_EQ(Samples(turned.begin() + kBlock - 1, turned.end()),
              Samples(side.begin() + kBlock - 1, side.end()));
}

TEST_P(Sector, AllAroundEndsAManualLocation) {
    engine.MMIfSetManualLocation(7, 0);
    engine.MMIfLookInAllDirectionsIncludingRear();
    engine.process(talkerAt(180));
    EXPECT_EQ(engine.location(), 6);
}

TEST_P(Sector, ForwardReachesToTheSides) {
    engine.MMIfLookForwardRejectRearNoise(0);
    engine.process(talkerAt(270));
    EXPECT_EQ(engine.location(), 9);
}

TEST_P(Sector, ForwardNeverLooksBehind) {
    engine.MMIfLookForwardRejectRearNoise(0);
    engine.process(talkerAt(150));
    EXPECT_TRUE(engine.location() <= 3 || engine.location() >= 9) << engine.location();
}

TEST_P(Sector, NarrowForwardReachesThirtyDegrees) {
    engine.MMIfLookNarrowForwardRejectRearNoise(0);
    engine.process(talkerAt(330));
    EXPECT_EQ(engine.location(), 11);
    engine.process(talkerAt(60));
    EXPECT_EQ(engine.location(), 1);
}

TEST_P(Sector, OneDirectionIsThePresentOne) {
    engine.process(talkerAt(120));
    engine.MMIfLookInOneDirectionRejectRearNoise(0);
    engine.process(talkerAt(300));
    EXPECT_EQ(engine.location(), 4);
}

TEST_P(Sector, LowersTheOutputWhileSoundComesFromOutside) {
    const auto rear = talkerAt(180);
    engine.MMIfLookForwardRejectRearNoise(0);
    const double open = powerOf(engine.process(rear), 16000);
    engine.MMIfInit(0);
    engine.MMIfLookForwardRejectRearNoise(20);
    EXPECT_NEAR(decibels(powerOf(engine.process(rear), 16000) / open), -20, 1);
}

TEST_P(Sector, LeavesSoundFromInsideAlone) {
    const auto front = talkerAt(0);
    engine.MMIfLookForwardRejectRearNoise(0);
    const Samples open = engine.process(front);
    engine.MMIfInit(0);
    engine.MMIfLookForwardRejectRearNoise(20);
    EXPECT_EQ(engine.process(front), open);
}
