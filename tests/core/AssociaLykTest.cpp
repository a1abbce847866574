#include "fakes/FakeShell.h"
#include "fakes/MemoryRegistro.h"
#include "player/AssociaLyk.h"

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr RegistryRoot Machine = RegistryRoot::LocalMachine;
constexpr const char* Extension = "SOFTWARE\\Classes\\.lyk";
constexpr const char* Program = "/opt/My Songs/sonnel";

class AssociaLykTest : public ::testing::Test {
  protected:
    void Associate() {
        AssociaLyk(store, shell, Program, [this](auto section, auto key, auto value) {
            store.changes.push_back("win.ini [" + std::string(section) + "] " + std::string(key) +
                                    "=" + std::string(value));
        });
    }

    MemoryRegistro store;
    FakeShell shell;
};

TEST_F(AssociaLykTest, OnlyAnEmptyClassIsAnInvitation) {
    Associate();
    store.Put(Machine, Extension, "", RegistryType::String, "OtherPlayer");
    Associate();
    store.Put(Machine, Extension, "", RegistryType::Number, std::string(4, '\0'));
    Associate();
    EXPECT_THAT(store.changes, IsEmpty());
    EXPECT_THAT(shell.registered, IsEmpty());
}

TEST_F(AssociaLykTest, WritesTheWholeAssociationOnce) {
    store.Put(Machine, Extension, "", RegistryType::String, "");
    Associate();
    const std::string type = "SOFTWARE\\Classes\\LYKfile";
    const std::string set = "set software\\classes\\lykfile";
    EXPECT_THAT(
        store.changes,
        ElementsAre(
            "create SOFTWARE\\Classes\\.lyk", "set software\\classes\\.lyk|=LYKfile",
            "create " + type, "create " + type + "\\Shell", "create " + type + "\\Shell\\open",
            "create " + type + "\\Shell\\open\\command", "create " + type + "\\DefaultIcon",
            set + "|=Sonnel Karaoke", set + "|EditFlags=" + std::string(4, '\0'),
            set + "|AlwaysShowExt=", set + "\\shell\\open\\command|=/opt/My Songs/sonnel \"%1\"",
            set + "\\defaulticon|=/opt/My Songs/sonnel",
            "create SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Extensions",
            "set software\\microsoft\\windows\\currentversion\\extensions|.lyk="
            "/opt/My Songs/sonnel ^.lyk",
            "win.ini [Extensions] lyk=/opt/My Songs/sonnel ^.lyk"));
    EXPECT_EQ(store.Get(Machine, type, "EditFlags")->type, RegistryType::Number);
    EXPECT_THAT(shell.registered, ElementsAre(Program));
    EXPECT_THAT(store.open, IsEmpty());
    Associate();
    EXPECT_EQ(shell.registered.size(), 1U) << "it is registered now";
}

TEST_F(AssociaLykTest, AStoreThatRefusesWritesLeavesTheRest) {
    store.Put(Machine, Extension, "", RegistryType::String, "");
    store.createStatus = 13;
    store.setStatus = 13;
    Associate();
    EXPECT_THAT(store.written, IsEmpty());
    EXPECT_EQ(store.changes.back(), "win.ini [Extensions] lyk=/opt/My Songs/sonnel ^.lyk");
    EXPECT_THAT(shell.registered, ElementsAre(Program)) << "for the user it can be done";
}

}  // namespace
}  // namespace sonnel::test
