#pragma once

/* One message of each shape, sent `count` times to the receiver: compiled as Objective-C, and written in C++. */

#ifdef __cplusplus
extern "C" {
#endif

void compiledObjectSends(void* receiver, long count);
void compiledIntegerSends(void* receiver, long count);
void compiledNumberSends(void* receiver, long count);
void compiledRectangleSends(void* receiver, long count);

void typedObjectSends(void* receiver, long count);
void typedIntegerSends(void* receiver, long count);
void typedNumberSends(void* receiver, long count);
void typedRectangleSends(void* receiver, long count);

#ifdef __cplusplus
}
#endif
