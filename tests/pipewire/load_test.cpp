// What PipeWire finds when it loads the plugin.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <spa/utils/names.h>

#include <cerrno>
#include <string>

#include "tests/pipewire/plugin_under_test.h"

namespace se_pipewire_test {
namespace {

TEST(PipeWirePlugin, HasOneFactoryForEchoCancellers) {
    const Library library;
    EXPECT_STREQ(library.factory().name, SPA_NAME_AEC);
    EXPECT_EQ(library.factory().version, static_cast<uint32_t>(SPA_VERSION_HANDLE_FACTORY));

    const spa_handle_factory* factory = nullptr;
    uint32_t index = 1;
    EXPECT_EQ(library.enumerate()(&factory, &index), 0);
    EXPECT_EQ(library.enumerate()(nullptr, &index), -EINVAL);
}

TEST(PipeWirePlugin, ListsItsOneInterface) {
    const Library library;
    const spa_interface_info* info = nullptr;
    uint32_t index = 0;
    ASSERT_EQ(library.factory().enum_interface_info(&library.factory(), &info, &index), 1);
    EXPECT_STREQ(info->type, "Spa:Pointer:Interface:Audio:AEC");
    EXPECT_EQ(library.factory().enum_interface_info(&library.factory(), &info, &index), 0);
}

TEST(PipeWirePlugin, HasNoOtherInterface) {
    Plugin plugin;
    void* interface = nullptr;
    EXPECT_EQ(plugin.handle().get_interface(&plugin.handle(), "Spa:Pointer:Interface:Node", &interface),
              -ENOENT);
    EXPECT_EQ(interface, nullptr);
}

// The module refuses an interface of a higher version than its own, 1, and calls only methods of the table's version.
TEST(PipeWirePlugin, FitsModulesOfVersion2And3) {
    Plugin plugin;
    EXPECT_EQ(plugin.interface().iface.version, 1U);
    EXPECT_EQ(plugin.methods().version, 3U);
    EXPECT_NE(plugin.methods().set_params, nullptr);
    EXPECT_NE(plugin.methods().init2, nullptr);
}

// The module reads it with sscanf("%u/%u") and ends the process when it is something else.
TEST(PipeWirePlugin, AsksForBlocksOf10Milliseconds) {
    Plugin plugin;
    EXPECT_STREQ(plugin.interface().latency, "160/16000");
}

TEST(PipeWirePlugin, StaysInTheProcessAsTheEngineDoes) {
    { const Library library; }
    void* const library = ::dlopen(SE_AEC_PLUGIN, RTLD_NOW | RTLD_NOLOAD);
    EXPECT_NE(library, nullptr);
    if (library != nullptr) ::dlclose(library);
}

TEST(PipeWirePlugin, IsNoUseBeforeInitAndSaysSo) {
    Plugin plugin;
    EXPECT_EQ(plugin.methods().enum_props(plugin.object(), 0, nullptr), 0);
    EXPECT_EQ(plugin.methods().get_params(plugin.object(), nullptr), 0);
    EXPECT_EQ(plugin.methods().run(plugin.object(), nullptr, nullptr, nullptr, 160), -EIO);
    EXPECT_EQ(plugin.methods().deactivate(plugin.object()), 0);
}

TEST(PipeWirePlugin, TakesListeners) {
    Plugin plugin;
    spa_hook hook{};
    const spa_audio_aec_events events{SPA_VERSION_AUDIO_AEC_EVENTS, nullptr};
    ASSERT_EQ(plugin.methods().add_listener(plugin.object(), &hook, &events, nullptr), 0);
    spa_hook_remove(&hook);
}

}  // namespace
}  // namespace se_pipewire_test
