// Declarations of macOS that only the self-test uses, as its public documentation describes them.
#pragma once

#import <ApplicationServices/ApplicationServices.h>
#import <Cocoa/Cocoa.h>
#include <cups/ppd.h>

extern "C" {
ppd_file_t* ppdOpenFile(const char* filename) __attribute__((deprecated));
void ppdClose(ppd_file_t* ppd) __attribute__((deprecated));
}

typedef struct OpaquePMPrintSession* PMPrintSession;
typedef const struct __CFArray* CFArrayRef;
typedef const void* PMObject;
enum { kPMNoError = 0 };
extern "C" {
OSStatus PMCreateSession(PMPrintSession* printSession);
OSStatus PMCreatePrintSettings(PMPrintSettings* printSettings);
OSStatus PMSessionDefaultPrintSettings(PMPrintSession printSession, PMPrintSettings printSettings);
OSStatus PMPrintSettingsCopyKeys(PMPrintSettings printSettings, CFArrayRef* settingsKeys) SINCE(10.5);
OSStatus PMRelease(PMObject object);
}

@class NSWindow;

@interface NSObject (SelfTest)
- (id)performSelector:(SEL)aSelector;
- (id)performSelector:(SEL)aSelector withObject:(id)object;
- (id)valueForKey:(NSString*)key;
- (void)setValue:(id)value forKey:(NSString*)key;
- (BOOL)isEqual:(id)object;
@end
SEL NSSelectorFromString(NSString* aSelectorName);

@interface NSString (SelfTest)
+ (instancetype)stringWithUTF8String:(const char*)nullTerminatedCString;
- (const char*)UTF8String;
- (const char*)fileSystemRepresentation;
- (NSString*)substringWithRange:(NSRange)range;
- (NSString*)stringByDeletingLastPathComponent;
@end
extern "C" NSString* NSTemporaryDirectory(void);

@interface NSArray (SelfTest)
- (NSUInteger)count;
- (id)objectAtIndex:(NSUInteger)index;
+ (instancetype)arrayWithObject:(id)anObject;
@end
@interface NSMutableDictionary (SelfTest)
- (void)removeAllObjects;
@end
@interface NSBundle (SelfTest)
+ (instancetype)bundleWithPath:(NSString*)path;
- (Class)principalClass;
- (BOOL)loadAndReturnError:(NSError**)error SINCE(10.5);
@end
@interface NSUserDefaults : NSObject
+ (NSUserDefaults*)standardUserDefaults;
- (NSString*)stringForKey:(NSString*)defaultName;
@end
@interface NSAutoreleasePool : NSObject
- (void)drain;
@end
@interface NSException (SelfTest)
- (NSExceptionName)name;
- (NSString*)reason;
@end
typedef void NSUncaughtExceptionHandler(NSException* exception);
extern "C" void NSSetUncaughtExceptionHandler(NSUncaughtExceptionHandler*);

@interface NSDate (SelfTest)
+ (NSDate*)distantPast;
@end
typedef NSString* NSRunLoopMode;
extern "C" NSRunLoopMode const NSDefaultRunLoopMode;
extern "C" NSRunLoopMode const NSModalPanelRunLoopMode;
@interface NSRunLoop : NSObject
+ (NSRunLoop*)currentRunLoop;
- (NSDate*)limitDateForMode:(NSRunLoopMode)mode;
@end

#define NSZeroPoint \
  NSPoint { 0, 0 }
inline NSPoint NSMakePoint(CGFloat x, CGFloat y) { return {x, y}; }

@interface NSColor (SelfTest) <NSObject>
@end
@interface NSView (SelfTest)
- (NSRect)frame;
- (void)setFrameOrigin:(NSPoint)newOrigin;
- (NSWindow*)window;
@end
@interface NSResponder : NSObject
@end
typedef unsigned long long NSEventMask;
enum : NSEventMask { NSAnyEventMask = ~0ULL };
@interface NSEvent : NSObject
@end
enum : NSUInteger { NSTitledWindowMask = 1 };
enum NSBackingStoreType : NSUInteger { NSBackingStoreBuffered = 2 };
@interface NSWindow : NSObject
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSUInteger)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag;
- (void)setReleasedWhenClosed:(BOOL)flag;
- (NSView*)contentView;
- (void)setFrameTopLeftPoint:(NSPoint)point;
- (void)makeKeyAndOrderFront:(id)sender;
- (BOOL)makeFirstResponder:(id)responder;
- (void)close;
@end
@interface NSApplication (SelfTest)
- (void)finishLaunching;
- (NSEvent*)nextEventMatchingMask:(NSEventMask)mask
                        untilDate:(NSDate*)expiration
                           inMode:(NSRunLoopMode)mode
                          dequeue:(BOOL)deqFlag;
- (void)sendEvent:(NSEvent*)event;
@end

@interface NSText (SelfTest)
- (NSString*)string;
- (void)selectAll:(id)sender;
@end
@interface NSTextView : NSText
- (void)insertText:(id)insertString;
- (void)deleteBackward:(id)sender;
@end
@interface NSControl (SelfTest)
- (BOOL)isEnabled;
- (double)doubleValue;
- (void)setDoubleValue:(double)value;
- (BOOL)sendAction:(SEL)action to:(id)target;
- (void)performClick:(id)sender;
@end
@interface NSTextField (SelfTest)
- (NSColor*)textColor;
@end
@interface NSStepper (SelfTest)
- (double)minValue;
- (double)maxValue;
- (double)increment;
@end
enum : NSInteger { NSMixedState = -1 };
@interface NSButton (SelfTest)
- (NSString*)title;
- (void)setAllowsMixedState:(BOOL)flag;
@end
@interface NSMenuItem (SelfTest)
- (NSString*)title;
@end
@interface NSPopUpButton (SelfTest)
- (NSString*)titleOfSelectedItem;
- (NSMenuItem*)selectedItem;
- (NSArray*)itemArray;
- (NSInteger)indexOfItemWithRepresentedObject:(id)obj;
- (void)selectItemAtIndex:(NSInteger)index;
@end
