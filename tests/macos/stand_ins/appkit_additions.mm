#include "appkit_additions.h"

@implementation NSStatusItem (Additions)

- (NSStatusBarButton*)button {
    return static_cast<NSStatusBarButton*>([self view]);
}

- (void)setBehavior:(NSStatusItemBehavior)behavior {
    static_cast<void>(behavior);
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
