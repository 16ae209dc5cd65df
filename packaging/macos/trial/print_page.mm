// A small application that prints one page, to try the panel in the system's print dialog. The page says what
// to look at.
#import <Cocoa/Cocoa.h>

static NSString* const kToLookAt =
    @"Tandem Trim: what to look at in the print dialog\n\n"
     "1. Choose the printer TandemTrimTrial. The pane Tandem Trim is among the others.\n"
     "2. Every text can be read, in light and in dark mode, and nothing is cut off.\n"
     "3. Switched off, everything but the check box is grey; switched on, nothing is grey.\n"
     "4. Type 1a2 into Top: 12 stays. Type 99: the largest margin stays. Delete all: 0 stays.\n"
     "5. Click each stepper: its box follows.\n"
     "6. Tab goes from top to bottom; VoiceOver names every control.\n"
     "7. The summary lists what is set.\n"
     "8. Set Top to 12 and print. The report then says whether the job has it.\n";

@interface TrialPage : NSView
@end

@implementation TrialPage

- (BOOL)isFlipped {
  return YES;
}

- (void)drawRect:(NSRect)rect {
  (void)rect;
  [kToLookAt drawInRect:NSInsetRect([self bounds], 36, 36) withAttributes:nil];
}

@end

// Ends with 0 when the job is sent, with 3 when the dialog is cancelled.
int main() {
  @autoreleasepool {
    [NSApplication sharedApplication];
    [NSApp setActivationPolicy:NSApplicationActivationPolicyRegular];
    [NSApp activateIgnoringOtherApps:YES];
    NSPrintInfo* info = [[[NSPrintInfo sharedPrintInfo] copy] autorelease];
    NSPrinter* printer = [NSPrinter printerWithName:@"TandemTrimTrial"];
    if (printer != nil) [info setPrinter:printer];
    TrialPage* page = [[[TrialPage alloc] initWithFrame:NSMakeRect(0, 0, 500, 700)] autorelease];
    return [[NSPrintOperation printOperationWithView:page printInfo:info] runOperation] ? 0 : 3;
  }
}
