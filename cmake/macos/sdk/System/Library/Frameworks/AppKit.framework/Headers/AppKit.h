// What the sources use of macOS's framework, as its public documentation describes it.
#pragma once

#import <Foundation/Foundation.h>

#define IBOutlet
#define IBAction void

@interface NSObject (NSNibAwaking)
- (void)awakeFromNib;
@end

@interface NSColor : NSObject
+ (NSColor*)blackColor;
+ (NSColor*)lightGrayColor;
+ (NSColor*)windowBackgroundColor;
- (void)set;
@end
extern "C" void NSRectFill(NSRect rect);

typedef NSString* NSAppearanceName;
extern "C" NSAppearanceName const NSAppearanceNameAqua SINCE(10.9);
SINCE(10.9)
@interface NSAppearance : NSObject
+ (NSAppearance*)appearanceNamed:(NSAppearanceName)name;
@end

@protocol NSUserInterfaceItemIdentification
- (NSString*)identifier SINCE(10.7);
- (void)setIdentifier:(NSString*)identifier SINCE(10.7);
@end

@interface NSView : NSObject <NSUserInterfaceItemIdentification>
- (instancetype)initWithFrame:(NSRect)frameRect;
- (NSRect)bounds;
- (BOOL)isFlipped;
- (BOOL)isOpaque;
- (void)drawRect:(NSRect)dirtyRect;
- (void)setAppearance:(NSAppearance*)appearance SINCE(10.9);
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
- (int)intValue;
- (void)takeIntValueFrom:(id)sender;
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

// For the application of the trial.
@interface NSString (NSStringDrawing)
- (void)drawInRect:(NSRect)rect withAttributes:(NSDictionary*)attrs;
@end

typedef enum : NSInteger { NSApplicationActivationPolicyRegular = 0 } NSApplicationActivationPolicy;
@interface NSApplication : NSObject
+ (NSApplication*)sharedApplication;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy SINCE(10.6);
- (void)activateIgnoringOtherApps:(BOOL)flag;
@end
extern "C" NSApplication* NSApp;

@interface NSPrinter : NSObject
+ (NSPrinter*)printerWithName:(NSString*)name;
@end
@interface NSPrintInfo : NSObject
+ (NSPrintInfo*)sharedPrintInfo;
- (void)setPrinter:(NSPrinter*)printer;
@end
@interface NSPrintOperation : NSObject
+ (NSPrintOperation*)printOperationWithView:(NSView*)view printInfo:(NSPrintInfo*)printInfo;
- (BOOL)runOperation;
@end
