#pragma once

// The names of a Mac's toolkit that GNUstep doesn't have, with the types that they have there.

#import <Cocoa/Cocoa.h>

#define NSEventModifierFlagCommand NSCommandKeyMask
#define NSEventModifierFlagShift NSShiftKeyMask
#define NSEventModifierFlagOption NSAlternateKeyMask

enum : NSUInteger {
    NSStatusItemBehaviorRemovalAllowed = 1 << 1,
    NSStatusItemBehaviorTerminationOnRemoval = 1 << 2,
};
typedef NSUInteger NSStatusItemBehavior;

@interface NSStatusItem (Additions)
- (NSStatusBarButton*)button;
- (void)setBehavior:(NSStatusItemBehavior)behavior;
@end

@interface NSFont (Additions)
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(CGFloat)weight;
@end

@interface NSApplication (Additions)
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (NSDockTile*)dockTile;
@end

@interface NSImage (Additions)
- (void)setTemplate:(BOOL)isTemplate;
@end

@interface NSView (Additions)
- (void)setAccessibilityLabel:(NSString*)label;
@end

// The bar of a Mac at the top of the screen, of which GNUstep has none: each item is a small
// window.
@interface StandInBar : NSStatusBar
+ (NSStatusItem*)lastItem;
@end
