#include "tools/se_host/commands/scene_options.h"

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/engine/array_file.h"
#include "host/output/errors.h"

namespace se_host {
namespace {

using se_scene::NoiseColour;
using se_scene::SceneOptions;

constexpr const char* kTalker = "Talker";
constexpr const char* kSurroundings = "Noise and room";
constexpr const char* kLoudspeaker = "Loudspeaker";

constexpr const char* kEcho = "--echo";
constexpr const char* kEchoPathChange = "--echo-path-change";
constexpr const char* kSecondAzimuth = "--second-azimuth";
constexpr const char* kDeadChannel = "--dead-channel";
constexpr const char* kEchoJumpBack = "--echo-jump-back";
constexpr const char* kEchoJump = "--echo-jump";
constexpr const char* kReverberation = "--reverberation";

// One row an option: its flag, the scene's own name for it, where its number goes.
struct OptionRow {
    const char* flag;
    const char* name;
    double SceneOptions::*value;
    const char* unit;
    const char* group;
    const char* needs;  // another flag, or null
    const char* help;
};

// Levels of this unit may also be "none": the part is silent then.
constexpr const char* kLevelOrNone = "DBFS";

constexpr OptionRow kOptionRows[] = {
    {"--seconds", "seconds", &SceneOptions::seconds, "S", "Options", nullptr, "Length of the recording"},
    {"--azimuth", "talker_azimuth_deg", &SceneOptions::talker_azimuth_deg, "DEGREES", kTalker, nullptr,
     "Direction, counter-clockwise seen from above; 0 is where channel 3's microphone stands"},
    {"--distance", "talker_distance_m", &SceneOptions::talker_distance_m, "METRES", kTalker, nullptr,
     "Distance from the centre of the array"},
    {"--level", "talker_level_dbfs", &SceneOptions::talker_level_dbfs, kLevelOrNone, kTalker, nullptr,
     "Level while speaking, at the centre microphone"},
    {"--talker-start", "talker_start_s", &SceneOptions::talker_start_s, "S", kTalker, nullptr,
     "Silent before this time"},
    {"--talker-end", "talker_end_s", &SceneOptions::talker_end_s, "S", kTalker, nullptr,
     "Silent after this time"},
    {"--walk", "walk_deg", &SceneOptions::walk_deg, "DEGREES", kTalker, nullptr,
     "The talker walks by this angle around the array"},
    {"--walk-start", "walk_start_s", &SceneOptions::walk_start_s, "S", kTalker, nullptr,
     "Time at which it starts to walk"},
    {"--walk-time", "walk_s", &SceneOptions::walk_s, "S", kTalker, nullptr, "Time that it walks"},
    {"--turn", "turn_s", &SceneOptions::turn_s, "S", kTalker, kSecondAzimuth,
     "Time that each of two talkers speaks before the other does"},
    {"--sensor-noise", "sensor_noise_dbfs", &SceneOptions::sensor_noise_dbfs, kLevelOrNone, kSurroundings,
     nullptr, "White noise, each microphone's own"},
    {"--diffuse-noise", "diffuse_noise_dbfs", &SceneOptions::diffuse_noise_dbfs, kLevelOrNone, kSurroundings,
     nullptr, "Diffuse noise, from all directions"},
    {kReverberation, "reverberation_s", &SceneOptions::reverberation_s, "S", kSurroundings, nullptr,
     "Time in which the room's sound falls by 60 dB; 0: no room"},
    {kEcho, "echo_level_dbfs", &SceneOptions::echo_level_dbfs, kLevelOrNone, kLoudspeaker, nullptr,
     "A far-end voice is played: its level at the centre microphone; the options below need it"},
    {"--far-end-level", "far_end_level_dbfs", &SceneOptions::far_end_level_dbfs, "LEVEL", kLoudspeaker, kEcho,
     "Level of the far end, in dBFS"},
    {"--echo-azimuth", "echo_azimuth_deg", &SceneOptions::echo_azimuth_deg, "DEGREES", kLoudspeaker, kEcho,
     "Direction of the loudspeaker"},
    {"--echo-distance", "echo_distance_m", &SceneOptions::echo_distance_m, "METRES", kLoudspeaker, kEcho,
     "Distance of the loudspeaker"},
    {"--echo-azimuth-after", "echo_azimuth_after_deg", &SceneOptions::echo_azimuth_after_deg, "DEGREES",
     kLoudspeaker, kEcho, "Its direction after --echo-path-change"},
    {"--echo-delay", "echo_delay_ms", &SceneOptions::echo_delay_ms, "MS", kLoudspeaker, kEcho,
     "Delay of the playback, beside the way through the air"},
    {"--echo-drift", "echo_drift_ppm", &SceneOptions::echo_drift_ppm, "PPM", kLoudspeaker, kEcho,
     "Parts per million by which the loudspeaker's clock is slower: the delay grows"},
    {"--echo-jump-by", "echo_jump_ms", &SceneOptions::echo_jump_ms, "MS", kLoudspeaker, kEcho,
     "Change of the delay at --echo-jump"},
    {"--loudspeaker-limit", "loudspeaker_limit_dbfs", &SceneOptions::loudspeaker_limit_dbfs, "LEVEL",
     kLoudspeaker, kEcho, "Peak beyond which the loudspeaker clips, in dBFS"},
};

const std::map<std::string, NoiseColour> kColours{
    {"white", NoiseColour::kWhite}, {"pink", NoiseColour::kPink}, {"babble", NoiseColour::kBabble}};

std::string numberText(double number) {
    std::ostringstream text;
    text << number;
    return text.str();
}

CLI::Option* addRow(CLI::App& command, const OptionRow& row, SceneOptions& options) {
    double& value = options.*row.value;
    auto* const option = command.add_option(row.flag, value, row.help)->type_name(row.unit)->group(row.group);
    if (row.needs != nullptr) option->needs(row.needs);
    if (value == se_scene::kSilent)
        option->default_str("none");
    else
        option->default_str(numberText(value));
    if (row.unit == kLevelOrNone) {
        const std::map<std::string, double> none{{"none", se_scene::kSilent}};
        option->transform(CLI::Transformer(none).description(""));
    }
    return option;
}

void addColour(CLI::App& command, SceneOptions& options) {
    const std::function<void(const std::string&)> take = [&options](const std::string& colour) {
        options.diffuse_noise_colour = kColours.at(colour);
    };
    command.add_option_function("--diffuse-colour", take, "Colour of that noise; babble: twelve voices")
        ->check(CLI::IsMember({"white", "pink", "babble"}).description(""))
        ->type_name("white|pink|babble")
        ->default_str("pink")
        ->group(kSurroundings);
}

void addRoom(CLI::App& command, SceneOptions& options) {
    const std::function<void(const std::vector<double>&)> take = [&options](const std::vector<double>& size) {
        options.room = {size[0], size[1], size[2]};
    };
    command.add_option_function("--room", take, "Its length, width and height; needs --reverberation")
        ->expected(3)
        ->type_name("METRES")
        ->default_str("7 6 2.8")
        ->needs(kReverberation)
        ->group(kSurroundings);
}

// Flags by the scene's names.
std::map<std::string, std::string> flagsByName() {
    std::map<std::string, std::string> flags{
        {"echo_path_change_s", kEchoPathChange}, {"echo_jump_s", kEchoJump},
        {"echo_jump_back_s", kEchoJumpBack},     {"second_talker_azimuth_deg", kSecondAzimuth},
        {"dead_channel", kDeadChannel},          {"room.length_m", "--room's length"},
        {"room.width_m", "--room's width"},      {"room.height_m", "--room's height"}};
    for (const OptionRow& row : kOptionRows) flags[row.name] = row.flag;
    return flags;
}

// A refusal of the scene names one of its options; the user knows its flag.
std::string inTermsOfFlags(const std::invalid_argument& refusal) {
    const std::string text = refusal.what();
    const size_t end_of_name = text.find(' ');
    const auto flags = flagsByName();
    const auto flag = flags.find(text.substr(0, end_of_name));
    return flag == flags.end() ? text : flag->second + text.substr(end_of_name);
}

}  // namespace

void addSceneOptions(CLI::App& command, SceneOptions& options) {
    command.add_option("--seed", options.seed, "Another number gives other voices and noises")
        ->type_name("N")
        ->capture_default_str();
    command
        .add_option(kSecondAzimuth, options.second_talker_azimuth_deg,
                    "A second talker in this direction; the two speak in turn")
        ->type_name("DEGREES")
        ->group(kTalker);
    for (const OptionRow& row : kOptionRows) addRow(command, row, options);
    command
        .add_option(kDeadChannel, options.dead_channel,
                    "Channel of a microphone that records nothing, 1 to 7; 0: all are in order")
        ->type_name("N")
        ->capture_default_str()
        ->group(kSurroundings);
    addColour(command, options);
    addRoom(command, options);
    command.add_option(kEchoPathChange, options.echo_path_change_s, "The loudspeaker moves at this time")
        ->type_name("S")
        ->needs(kEcho)
        ->group(kLoudspeaker);
    CLI::Option* const jump =
        command.add_option(kEchoJump, options.echo_jump_s, "The delay changes at once at this time")
            ->type_name("S")
            ->needs(kEcho)
            ->group(kLoudspeaker);
    command.add_option(kEchoJumpBack, options.echo_jump_back_s, "The delay changes back at this time")
        ->type_name("S")
        ->needs(jump)
        ->group(kLoudspeaker);
}

std::vector<se_scene::MicrophonePlace> circleOf(const std::string& path) {
    const ArrayFile array = readArrayFile(path);
    std::vector<se_scene::MicrophonePlace> circle;
    for (int microphone = 1; microphone < se_scene::kMicrophones; ++microphone) {
        const ArrayFile::Place& place = array.placeOf(se_scene::kChannelOfMicrophone[microphone]);
        circle.push_back({place.millimetres / 1000, place.degrees});
    }
    return circle;
}

se_scene::Scene simulate(const se_scene::SceneOptions& options) {
    try {
        return se_scene::makeScene(options);
    } catch (const std::invalid_argument& refusal) {
        throw se_output::UsageError(inTermsOfFlags(refusal));
    }
}

}  // namespace se_host
