#import <AppKit/AppKit.h>
