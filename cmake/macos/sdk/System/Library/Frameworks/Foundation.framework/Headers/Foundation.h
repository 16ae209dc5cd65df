// The part of macOS's framework that the sources use, as its public documentation describes it.
#pragma once

#import <CoreFoundation/CoreFoundation.h>
#include <stdbool.h>
#include <stddef.h>

#if defined(__arm64__)
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif
#define YES ((BOOL)1)
#define NO ((BOOL)0)
#define nil nullptr

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double NSTimeInterval;
typedef double CGFloat;
typedef unsigned short unichar;
typedef struct objc_class* Class;
typedef struct objc_object {
  Class isa;
} * id;
typedef struct objc_selector* SEL;

typedef struct _NSRange {
  NSUInteger location;
  NSUInteger length;
} NSRange;
inline NSRange NSMakeRange(NSUInteger location, NSUInteger length) { return {location, length}; }

typedef struct CGPoint {
  CGFloat x, y;
} NSPoint;
typedef struct CGSize {
  CGFloat width, height;
} NSSize;
typedef struct CGRect {
  NSPoint origin;
  NSSize size;
} NSRect;

inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
  return {{x, y}, {width, height}};
}
extern "C" NSRect NSInsetRect(NSRect rect, CGFloat dX, CGFloat dY);

typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding { NSUTF8StringEncoding = 4 };

@class NSArray, NSBundle, NSDictionary, NSEnumerator, NSString;
typedef NSString* NSNotificationName;
typedef NSString* NSExceptionName;

typedef struct {
  unsigned long state;
  id __unsafe_unretained* itemsPtr;
  unsigned long* mutationsPtr;
  unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSObject
- (Class)class;
- (BOOL)isKindOfClass:(Class)aClass;
- (BOOL)respondsToSelector:(SEL)aSelector;
- (instancetype)retain;
- (oneway void)release;
- (instancetype)autorelease;
- (NSString*)description;
@end

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)len;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject> {
  Class isa;
}
+ (instancetype)alloc;
+ (Class)class;
- (instancetype)init;
- (void)dealloc;
- (id)copy;
@end

@interface NSString : NSObject
- (instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)len encoding:(NSStringEncoding)encoding;
- (NSUInteger)length;
- (unichar)characterAtIndex:(NSUInteger)index;
- (NSString*)substringFromIndex:(NSUInteger)from;
- (BOOL)isEqualToString:(NSString*)aString;
- (NSString*)stringByReplacingOccurrencesOfString:(NSString*)target
                                       withString:(NSString*)replacement SINCE(10.5);
@end
@interface NSMutableString : NSString
+ (instancetype)string;
- (void)appendString:(NSString*)aString;
- (void)appendFormat:(NSString*)format, ... __attribute__((format(__NSString__, 1, 2)));
@end

@interface NSNumber : NSObject
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithLongLong:(long long)value;
+ (NSNumber*)numberWithDouble:(double)value;
+ (NSNumber*)numberWithBool:(BOOL)value;
- (const char*)objCType;
- (long long)longLongValue;
- (double)doubleValue;
@end

@interface NSData : NSObject
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length;
- (NSUInteger)length;
- (void)getBytes:(void*)buffer length:(NSUInteger)length;
@end

@interface NSDate : NSObject
+ (instancetype)dateWithTimeIntervalSinceReferenceDate:(NSTimeInterval)ti;
- (NSTimeInterval)timeIntervalSinceReferenceDate;
@end

@interface NSArray : NSObject <NSFastEnumeration>
+ (instancetype)arrayWithObjects:(const id[])objects count:(NSUInteger)cnt;
- (NSEnumerator*)objectEnumerator;
@end
@interface NSMutableArray : NSArray
+ (instancetype)array;
+ (instancetype)arrayWithCapacity:(NSUInteger)numItems;
- (instancetype)initWithCapacity:(NSUInteger)numItems;
- (void)addObject:(id)anObject;
- (void)addObjectsFromArray:(NSArray*)otherArray;
@end

@interface NSDictionary : NSObject <NSFastEnumeration>
- (instancetype)initWithContentsOfFile:(NSString*)path;
- (NSUInteger)count;
- (id)objectForKey:(id)aKey;
- (NSEnumerator*)keyEnumerator;
- (NSArray*)allKeys;
@end
@interface NSMutableDictionary : NSDictionary
+ (instancetype)dictionaryWithCapacity:(NSUInteger)numItems;
- (void)setObject:(id)anObject forKey:(id)aKey;
- (void)removeObjectForKey:(id)aKey;
@end

@interface NSEnumerator : NSObject <NSFastEnumeration>
@end

@interface NSError : NSObject
@end

@interface NSException : NSObject
+ (void)raise:(NSExceptionName)name format:(NSString*)format, ... __attribute__((format(__NSString__, 2, 3)));
@end
extern "C" NSExceptionName const NSGenericException;
extern "C" NSExceptionName const NSRangeException;
extern "C" NSExceptionName const NSInvalidArgumentException;
extern "C" NSExceptionName const NSMallocException;

@interface NSBundle : NSObject
+ (NSBundle*)bundleForClass:(Class)aClass;
- (NSString*)pathForResource:(NSString*)name ofType:(NSString*)ext;
- (NSString*)localizedStringForKey:(NSString*)key value:(NSString*)value table:(NSString*)tableName;
@end

@interface NSNotification : NSObject
@property(readonly, retain) id object;
@end
@interface NSNotificationCenter : NSObject
+ (NSNotificationCenter*)defaultCenter;
- (void)addObserver:(id)observer selector:(SEL)aSelector name:(NSNotificationName)aName object:(id)anObject;
- (void)removeObserver:(id)observer;
- (void)removeObserver:(id)observer name:(NSNotificationName)aName object:(id)anObject;
@end

@interface NSFormatter : NSObject
- (NSString*)stringForObjectValue:(id)obj;
- (BOOL)getObjectValue:(id*)obj forString:(NSString*)string errorDescription:(NSString**)error;
@end
@interface NSNumberFormatter : NSFormatter
@end

extern "C" void NSLog(NSString* format, ...) __attribute__((format(__NSString__, 1, 2)));
