// What GNUstep's headers lack of AppKit, from Apple's reference.
#pragma once
#include_next <AppKit/AppKit.h>

enum : NSUInteger { NSEventModifierFlagOption = 1 << 19, NSEventModifierFlagCommand = 1 << 20 };
enum : NSUInteger { NSWindowCollectionBehaviorFullScreenNone = 1 << 9 };  // macOS 10.7

@interface NSWindow (Reference)
@property(class, nonatomic) BOOL allowsAutomaticWindowTabbing;      // macOS 10.12
@property(nonatomic) BOOL preventsApplicationTerminationWhenModal;  // macOS 10.6
@end

@interface NSMenuItem (Reference)
@property(nonatomic, getter=isHidden) BOOL hidden;
@property(nonatomic) BOOL allowsKeyEquivalentWhenHidden;  // macOS 10.13
@end
