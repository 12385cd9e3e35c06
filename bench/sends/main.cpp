#include <cstdio>
#include <vector>

#include "bench/sends/sends.h"
#include "bench/support/BenchPhone.hpp"
#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSObject.hpp"
#include "platform/runtime/ClassBuilder.hpp"

/// Sends the same messages to the same object, in turns, from compiled Objective-C and from C++. Prints the time of one send and
/// the ratio; ends with status 1 when a shape's ratio is above the limit.

namespace {

constexpr double mostRatio = 1.05;

struct ReceiverIvars {
    id unused;
};

id object(NSObject* self, SEL)
{
    return self;
}

void takeInteger(NSObject*, SEL, int)
{
}

double number(NSObject*, SEL)
{
    return 1;
}

CGRect rectangle(NSObject*, SEL)
{
    return CGRect::make(1, 2, 3, 4);
}

void registerReceiver()
{
    ClassBuilder<ReceiverIvars>("BenchReceiver", "NSObject")
        .method<"object">(object)
        .method<"takeInteger:">(takeInteger)
        .method<"number">(number)
        .method<"rectangle">(rectangle)
        .registerClass();
}

using Sends = void (*)(void* receiver, long count);

struct Shape {
    const char* name;
    Sends compiled;
    Sends typed;
    bool isToNil;
};

constexpr Shape shapes[] = {
    {"no argument, object result", compiledObjectSends, typedObjectSends, false},
    {"integer argument", compiledIntegerSends, typedIntegerSends, false},
    {"double result", compiledNumberSends, typedNumberSends, false},
    {"CGRect result", compiledRectangleSends, typedRectangleSends, false},
    {"to nil", compiledObjectSends, typedObjectSends, true},
};

/// The processor time of one send, in nanoseconds.
double timeOf(Sends sends, void* receiver)
{
    constexpr long count = 50'000;
    constexpr double nanoseconds = 1e9;
    return processorTimeOf([=] { sends(receiver, count); }) / count * nanoseconds;
}

double measure(const Shape& shape, void* receiver)
{
    std::vector<double> compiled;
    std::vector<double> typed;
    std::vector<double> ratios;
    constexpr int rounds = 301;
    for (int round = 0; round < rounds; ++round) {
        const bool isCompiledFirst = round % 2 == 0;
        if (isCompiledFirst)
            compiled.push_back(timeOf(shape.compiled, receiver));
        typed.push_back(timeOf(shape.typed, receiver));
        if (!isCompiledFirst)
            compiled.push_back(timeOf(shape.compiled, receiver));
        ratios.push_back(typed.back() / compiled.back());
    }
    const double ratio = median(ratios);
    std::printf("| send: %s | %.2f ns | compiled Objective-C %.2f ns | ratio %.3f (at most %.2f) |\n", shape.name, median(typed),
                median(compiled), ratio, mostRatio);
    return ratio;
}

} // namespace

int main()
{
    registerReceiver();
    const id receiver = send<"new", id>(objc_getClass("BenchReceiver"));
    bool isWithinLimit = true;
    for (const Shape& shape : shapes)
        isWithinLimit = measure(shape, shape.isToNil ? nullptr : receiver) <= mostRatio && isWithinLimit;
    return isWithinLimit ? 0 : 1;
}
