// The part of macOS's framework that the sources use, as its public documentation describes it.
#pragma once

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

struct ppd_file_s;

@protocol PDEPlugInCallbackProtocol
- (PMPrintSettings)printSettings;
- (struct ppd_file_s*)ppdFile;
@end
