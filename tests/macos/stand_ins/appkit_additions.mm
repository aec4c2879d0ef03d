#include "appkit_additions.h"

@interface StandInItem : NSStatusItem {
    NSWindow* window;
    NSStatusBarButton* face;
    NSMenu* shownMenu;
}
@end

@implementation StandInItem

- (id)init {
    self = [super init];
    const NSRect place = NSMakeRect(400, 560, 120, 24);
    window = [[NSWindow alloc] initWithContentRect:place
                                         styleMask:NSBorderlessWindowMask
                                           backing:NSBackingStoreBuffered
                                             defer:NO];
    face = [[NSStatusBarButton alloc] initWithFrame:NSMakeRect(0, 0, 120, 24)];
    [[window contentView] addSubview:face];
    [window orderFront:nil];
    return self;
}

- (void)dealloc {
    [window close];
    [face release];
    [shownMenu release];
    [super dealloc];
}

- (NSStatusBarButton*)button {
    return face;
}

- (NSMenu*)menu {
    return shownMenu;
}

- (void)setMenu:(NSMenu*)menu {
    [menu retain];
    [shownMenu release];
    shownMenu = menu;
}

@end

@implementation NSStatusItem (Additions)

- (NSStatusBarButton*)button {
    return nil;
}

- (void)setBehavior:(NSStatusItemBehavior)behavior {
    static_cast<void>(behavior);
}

@end

static NSStatusItem* lastItem = nil;

@implementation StandInBar

+ (NSStatusItem*)lastItem {
    return lastItem;
}

- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    static_cast<void>(length);
    lastItem = [[[StandInItem alloc] init] autorelease];
    return lastItem;
}

- (void)removeStatusItem:(NSStatusItem*)item {
    if (item == lastItem) {
        lastItem = nil;
    }
}

@end

@implementation NSStatusBar (Additions)

+ (NSStatusBar*)systemStatusBar {
    static StandInBar* const bar = [[StandInBar alloc] init];
    return bar;
}

@end

@implementation NSFont (Additions)

+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(CGFloat)weight {
    return weight > 0 ? [NSFont boldSystemFontOfSize:size] : [NSFont systemFontOfSize:size];
}

@end

@implementation NSApplication (Additions)

- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy {
    static_cast<void>(policy);
    return YES;
}

- (NSDockTile*)dockTile {
    static NSDockTile* const tile = [[NSDockTile alloc] init];
    return tile;
}

@end

@implementation NSImage (Additions)

- (void)setTemplate:(BOOL)isTemplate {
    static_cast<void>(isTemplate);
}

@end

@implementation NSView (Additions)

- (void)setAccessibilityLabel:(NSString*)label {
    static_cast<void>(label);
}

@end
