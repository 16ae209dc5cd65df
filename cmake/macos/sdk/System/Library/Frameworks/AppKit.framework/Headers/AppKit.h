// The part of macOS's framework that the sources use, as its public documentation describes it.
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
+ (NSColor*)controlColor;
+ (NSColor*)controlTextColor;
+ (NSColor*)textBackgroundColor;
- (void)set;
@end
extern "C" void NSRectFill(NSRect rect);

@interface NSFont : NSObject
+ (NSFont*)systemFontOfSize:(CGFloat)fontSize;
@end

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

typedef enum : NSUInteger {
  NSViewWidthSizable = 2,
  NSViewMaxXMargin = 4,
  NSViewMinYMargin = 8
} NSAutoresizingMaskOptions;
@interface NSView : NSObject <NSUserInterfaceItemIdentification>
- (instancetype)initWithFrame:(NSRect)frameRect;
- (void)addSubview:(NSView*)view;
- (void)setAutoresizingMask:(NSUInteger)mask;
- (void)setNextKeyView:(NSView*)next;
- (void)setAccessibilityTitleUIElement:(id)element SINCE(10.10);
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

typedef enum : NSUInteger {
  NSLineBreakByClipping = 2,
  NSLineBreakByTruncatingTail = 4
} NSLineBreakMode SINCE(10.0);
@interface NSCell : NSObject
- (void)setLineBreakMode:(NSLineBreakMode)mode SINCE(10.4);
- (void)setScrollable:(BOOL)flag;
- (void)setSendsActionOnEndEditing:(BOOL)flag;
@end

// Their numbers differ between processors.
typedef enum : NSInteger {
  NSTextAlignmentLeft = 0,
#if defined(__x86_64__)
  NSTextAlignmentRight = 1,
  NSTextAlignmentCenter = 2,
#else
  NSTextAlignmentCenter = 1,
  NSTextAlignmentRight = 2,
#endif
  NSTextAlignmentNatural = 4
} NSTextAlignment;
@interface NSControl : NSView
@property(assign) id target;
@property SEL action;
- (NSCell*)cell;
- (void)setAlignment:(NSTextAlignment)alignment;
- (void)setContinuous:(BOOL)flag;
- (void)setFont:(NSFont*)font;
- (void)setFormatter:(NSFormatter*)formatter;
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
- (void)setBackgroundColor:(NSColor*)color;
- (void)setBezeled:(BOOL)flag;
- (void)setDrawsBackground:(BOOL)flag;
- (void)setEditable:(BOOL)flag;
- (void)setSelectable:(BOOL)flag;
@end

@interface NSStepper : NSControl
- (void)setMinValue:(double)value;
- (void)setMaxValue:(double)value;
- (void)setIncrement:(double)value;
- (void)setValueWraps:(BOOL)flag;
@end

typedef enum : NSUInteger { NSButtonTypeSwitch = 3, NSButtonTypeMomentaryPushIn = 7 } NSButtonType;
typedef enum : NSUInteger { NSBezelStyleRounded = 1, NSBezelStyleRegularSquare = 2 } NSBezelStyle;
typedef enum : NSUInteger { NSImageLeft = 2 } NSCellImagePosition;
@interface NSButton : NSControl
- (void)setButtonType:(NSButtonType)type;
- (void)setBezelStyle:(NSBezelStyle)style;
- (void)setBordered:(BOOL)flag;
- (void)setImagePosition:(NSCellImagePosition)position;
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
- (instancetype)initWithFrame:(NSRect)buttonFrame pullsDown:(BOOL)flag;
- (void)addItemWithTitle:(NSString*)title;
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
