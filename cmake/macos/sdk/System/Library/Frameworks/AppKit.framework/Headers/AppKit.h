// What the sources use of macOS's framework, as its public documentation describes it.
#pragma once

#import <Foundation/Foundation.h>

#define IBOutlet
#define IBAction void

@interface NSColor : NSObject
+ (NSColor*)blackColor;
+ (NSColor*)lightGrayColor;
@end

@protocol NSUserInterfaceItemIdentification
- (NSString*)identifier SINCE(10.7);
- (void)setIdentifier:(NSString*)identifier SINCE(10.7);
@end

@interface NSView : NSObject <NSUserInterfaceItemIdentification>
@end

@interface NSText : NSView
- (NSRange)selectedRange;
- (void)setSelectedRange:(NSRange)range;
@end

@interface NSControl : NSView
@property(assign) id target;
- (void)setEnabled:(BOOL)enabled;
- (NSString*)stringValue;
- (void)setStringValue:(NSString*)value;
- (NSText*)currentEditor;
@end
extern "C" NSNotificationName const NSControlTextDidChangeNotification;

@interface NSTextField : NSControl
- (void)setTextColor:(NSColor*)color;
@end

@interface NSStepper : NSControl
- (void)setMinValue:(double)value;
- (void)setMaxValue:(double)value;
@end

@interface NSButton : NSControl
- (void)setTitle:(NSString*)title;
- (NSInteger)state;
- (void)setState:(NSInteger)value;
@end

@interface NSMenuItem : NSObject
- (void)setTitle:(NSString*)title;
- (id)representedObject;
- (void)setRepresentedObject:(id)object;
@end

@interface NSPopUpButton : NSButton
- (NSInteger)numberOfItems;
- (NSMenuItem*)itemAtIndex:(NSInteger)index;
- (NSInteger)indexOfSelectedItem;
- (void)selectItemWithTitle:(NSString*)title;
@end

@interface NSNib : NSObject
- (instancetype)initWithNibNamed:(NSString*)nibName bundle:(NSBundle*)bundle;
- (BOOL)instantiateWithOwner:(id)owner topLevelObjects:(NSArray**)topLevelObjects SINCE(10.8);
@end
