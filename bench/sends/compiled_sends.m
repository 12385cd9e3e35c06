#include <objc/objc.h>

#include "bench/sends/sends.h"

typedef struct {
    double x, y, width, height;
} Rectangle;

@protocol Receiver
- (id)object;
- (void)takeInteger:(int)integer;
- (double)number;
- (Rectangle)rectangle;
@end

void compiledObjectSends(void* receiver, long count)
{
    for (long i = 0; i < count; ++i)
        [(id<Receiver>)receiver object];
}

void compiledIntegerSends(void* receiver, long count)
{
    for (long i = 0; i < count; ++i)
        [(id<Receiver>)receiver takeInteger:(int)i];
}

void compiledNumberSends(void* receiver, long count)
{
    for (long i = 0; i < count; ++i)
        [(id<Receiver>)receiver number];
}

void compiledRectangleSends(void* receiver, long count)
{
    for (long i = 0; i < count; ++i)
        [(id<Receiver>)receiver rectangle];
}
