#import <Cocoa/Cocoa.h>

#include "views/macos/native_application.h"

#include "views/macos/menu_selectors.h"
#include "views/macos/native_text.h"

namespace varnhold {

namespace {

using ChooseRow = std::function<bool(MainMenuAction action)>;

// Both for as long as the program lives.
ApplicationEvents& applicationEvents() {
    static ApplicationEvents events;
    return events;
}

ChooseRow& chooseRow() {
    static ChooseRow choose;
    return choose;
}

} // namespace

} // namespace varnhold

@interface VarnholdApplicationDelegate : NSObject
@end

@interface VarnholdMainMenuTarget : NSObject
- (void)choose:(NSMenuItem*)item;
@end

@implementation VarnholdApplicationDelegate

- (BOOL)applicationShouldHandleReopen:(NSApplication*)application
                    hasVisibleWindows:(BOOL)hasVisibleWindows {
    static_cast<void>(application);
    varnhold::applicationEvents().onReopened(hasVisibleWindows);
    return YES;
}

// The toolkit would ask every window first, and put the end off.
- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)application {
    static_cast<void>(application);
    return NSTerminateNow;
}

- (void)willTerminate:(NSNotification*)notification {
    static_cast<void>(notification);
    varnhold::applicationEvents().onTerminating();
}

@end

@implementation VarnholdMainMenuTarget

- (void)choose:(NSMenuItem*)item {
    const auto action = static_cast<varnhold::MainMenuAction>([item tag]);
    const char* selector = varnhold::standardSelector(action);
    if (!varnhold::chooseRow()(action) && selector != nullptr) {
        [NSApp sendAction:sel_registerName(selector) to:nil from:item];
    }
}

@end

namespace varnhold {

namespace {

NSMenuItem* itemOf(const MainMenuRow& row, id target) {
    if (row.action == MainMenuAction::none) {
        return [NSMenuItem separatorItem];
    }
    NSMenuItem* item = [[[NSMenuItem alloc] initWithTitle:nativeText(row.title)
                                                   action:@selector(choose:)
                                            keyEquivalent:nativeText(row.key)] autorelease];
    NSUInteger mask = NSEventModifierFlagCommand;
    if (row.shift) {
        mask |= NSEventModifierFlagShift;
    }
    if (row.option) {
        mask |= NSEventModifierFlagOption;
    }
    [item setKeyEquivalentModifierMask:mask];
    [item setTarget:target];
    [item setTag:static_cast<NSInteger>(row.action)];
    return item;
}

void showInDock() {
    NSImageView* picture = [[[NSImageView alloc] init] autorelease];
    [picture setImage:[NSApp applicationIconImage]];
    [[NSApp dockTile] setContentView:picture];
    [[NSApp dockTile] display];
}

} // namespace

void watchApplication(ApplicationEvents events) {
    applicationEvents() = std::move(events);
    id delegate = [[VarnholdApplicationDelegate alloc] init]; // the application doesn't keep it
    [[NSApplication sharedApplication] setDelegate:delegate];
    // Not left to the toolkit's delegate to pass on: the fleet hangs on it.
    [[NSNotificationCenter defaultCenter] addObserver:delegate
                                             selector:@selector(willTerminate:)
                                                 name:NSApplicationWillTerminateNotification
                                               object:nil];
}

void installNativeMainMenu(const std::vector<MainMenu>& menus,
                           std::function<bool(MainMenuAction action)> choose) {
    chooseRow() = std::move(choose);
    static VarnholdMainMenuTarget* const target = [[VarnholdMainMenuTarget alloc] init];
    NSMenu* bar = [[[NSMenu alloc] initWithTitle:@"Varnhold"] autorelease];
    for (const MainMenu& menu : menus) {
        NSMenu* below = [[[NSMenu alloc] initWithTitle:nativeText(menu.title)] autorelease];
        [below setAutoenablesItems:NO];
        for (const MainMenuRow& row : menu.rows) {
            [below addItem:itemOf(row, target)];
        }
        NSMenuItem* head = [[[NSMenuItem alloc] initWithTitle:nativeText(menu.title)
                                                       action:static_cast<SEL>(nullptr)
                                                keyEquivalent:@""] autorelease];
        [bar addItem:head];
        [bar setSubmenu:below forItem:head];
    }
    [NSApp setMainMenu:bar];
}

void setNativeActivationPolicy(ActivationPolicy policy) {
    if (policy == ActivationPolicy::accessory) {
        [NSApp setActivationPolicy:NSApplicationActivationPolicyAccessory];
        return;
    }
    [NSApp setActivationPolicy:NSApplicationActivationPolicyRegular];
    showInDock();
    [[NSProcessInfo processInfo] setProcessName:@"Varnhold"];
}

void setNativeApplicationIcon(const std::string& path) {
    NSImage* icon = [[[NSImage alloc] initWithContentsOfFile:nativeText(path)] autorelease];
    if (icon != nil) {
        [NSApp setApplicationIconImage:icon];
        showInDock();
    }
}

bool isNativeImage(const std::string& path) {
    return [[[NSImage alloc] initWithContentsOfFile:nativeText(path)] autorelease] != nil;
}

void activateNatively() {
    [NSApp activateIgnoringOtherApps:YES];
}

} // namespace varnhold
