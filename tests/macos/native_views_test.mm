#import <Cocoa/Cocoa.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "views/macos/native_application.h"
#include "views/macos/native_status_item.h"

// What is said in Objective-C++, run against the stand-ins: not how it looks, but that rows, keys
// and actions come out and come back.
namespace varnhold {
namespace {

using ::testing::ElementsAre;
using Row = MenuRow;

std::string textOf(NSString* text) {
    return [text UTF8String];
}

std::vector<std::string> rowsOf(NSMenu* menu) {
    std::vector<std::string> rows;
    for (NSInteger i = 0; i < [menu numberOfItems]; ++i) {
        NSMenuItem* item = [menu itemAtIndex:i];
        if ([item isSeparatorItem]) {
            rows.emplace_back("-");
            continue;
        }
        rows.push_back(std::string([item isEnabled] ? "" : "(") + textOf([item title]) +
                       ([item isEnabled] ? "" : ")") + textOf([item keyEquivalent]));
    }
    return rows;
}

void turn() {
    [[NSRunLoop currentRunLoop] runUntilDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
}

class NativeItem : public ::testing::Test {
protected:
    std::vector<std::string> chosen;
    NativeStatusItem item{[this](MenuAction action, const std::string& value) {
        chosen.push_back(std::to_string(static_cast<int>(action)) + " " + value);
    }};

    static NSStatusItem* shown() { return [StandInBar lastItem]; }
    static NSMenu* menu() { return [shown() menu]; }
};

TEST_F(NativeItem, ShowsBarsAndTitleAndSaysThemInFull) {
    item.setImage({8, 16, {{0, 0, 2, 16, 0}, {3, 6, 2, 4, 0.4}, {6, 7.5, 2, 1, 0.83}}});
    item.setTitle(" 2/3 🔴1", "2 of 3 bots running, 1 crashed");

    NSStatusBarButton* button = [shown() button];
    EXPECT_EQ([[button image] size].width, 8);
    EXPECT_EQ([[button image] size].height, 16);
    EXPECT_EQ(textOf([button title]), " 2/3 🔴1");
    EXPECT_EQ(textOf([button toolTip]), "2 of 3 bots running, 1 crashed");
    EXPECT_EQ([button imagePosition], static_cast<NSCellImagePosition>(NSImageLeft));
}

TEST_F(NativeItem, HasTheRowsOfTheMenuWithTheirKeys) {
    item.setMenu({{Row::Kind::item, "Preferences...", ",", MenuAction::openModelSelector},
                  {},
                  {Row::Kind::header, "── Bots ──"},
                  {Row::Kind::item, "🧭 Planner (Idle)", "", MenuAction::toggleDaemon, "label"}});
    EXPECT_THAT(rowsOf(menu()),
                ElementsAre("Preferences...,", "-", "(── Bots ──)", "🧭 Planner (Idle)"));
}

TEST_F(NativeItem, SendsBackWhichRowWasChosenAndWhatItIsAbout) {
    item.setMenu({{Row::Kind::item, "Planner", "", MenuAction::toggleDaemon, "com.ostrelleai.é"},
                  {Row::Kind::item, "Quit", "q", MenuAction::terminate}});
    [menu() performActionForItemAtIndex:0];
    [menu() performActionForItemAtIndex:1];
    EXPECT_THAT(chosen, ElementsAre(std::to_string(static_cast<int>(MenuAction::toggleDaemon)) +
                                        " com.ostrelleai.é",
                                    std::to_string(static_cast<int>(MenuAction::terminate)) + " "));
}

TEST_F(NativeItem, KeepsAnOpenMenuAndTakesTheNewRowsOnceItHasClosed) {
    item.setMenu({{Row::Kind::header, "first"}});
    NSMenu* open = menu();
    id delegate = [open delegate];
    [delegate menuWillOpen:open];
    item.setMenu({{Row::Kind::header, "second"}});
    item.setMenu({{Row::Kind::header, "third"}});
    EXPECT_THAT(rowsOf(menu()), ElementsAre("(first)"));

    [delegate menuDidClose:open];
    turn();
    EXPECT_THAT(rowsOf(menu()), ElementsAre("(third)"));
}

TEST(NativeMainMenu, HasEveryRowAndAsksTheProgramFirst) {
    std::vector<MainMenuAction> asked;
    installNativeMainMenu(mainMenus(), [&asked](MainMenuAction action) {
        asked.push_back(action);
        return true;
    });
    NSMenu* bar = [NSApp mainMenu];
    ASSERT_EQ([bar numberOfItems], 3);
    EXPECT_THAT(rowsOf([[bar itemAtIndex:1] submenu]),
                ElementsAre("Custom Groups…g", "-", "Close Windoww"));
    NSMenuItem* quit = [[[bar itemAtIndex:0] submenu] itemAtIndex:9];
    EXPECT_EQ(textOf([quit title]), "Quit Varnhold (Stop All Agents)");
    EXPECT_EQ([quit keyEquivalentModifierMask],
              NSEventModifierFlagCommand | NSEventModifierFlagShift);

    [[[bar itemAtIndex:0] submenu] performActionForItemAtIndex:9];
    EXPECT_THAT(asked, ElementsAre(MainMenuAction::terminate));
}

TEST(NativeApplication, HearsOfReopeningAndOfItsEnd) {
    std::vector<std::string> heard;
    watchApplication({[&heard](bool visible) { heard.emplace_back(visible ? "seen" : "unseen"); },
                      [&heard] { heard.emplace_back("end"); }});
    id delegate = [NSApp delegate];
    EXPECT_TRUE([delegate applicationShouldHandleReopen:NSApp hasVisibleWindows:YES]);
    EXPECT_EQ([delegate applicationShouldTerminate:NSApp],
              static_cast<NSApplicationTerminateReply>(NSTerminateNow));
    [[NSNotificationCenter defaultCenter]
        postNotificationName:NSApplicationWillTerminateNotification
                      object:NSApp];
    EXPECT_THAT(heard, ElementsAre("seen", "end"));
}

TEST(NativeApplication, KnowsAnImageFromAnotherFile) {
    EXPECT_TRUE(isNativeImage(VARNHOLD_SOURCE "/packaging/icons/64.png"));
    EXPECT_FALSE(isNativeImage(VARNHOLD_SOURCE "/README.md"));
    EXPECT_FALSE(isNativeImage("/nowhere.png"));
}

} // namespace
} // namespace varnhold

int main(int argc, char** argv) {
    ::testing::InitGoogleMock(&argc, argv);
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    [NSApplication sharedApplication];
    const int code = RUN_ALL_TESTS();
    [pool release];
    return code;
}
