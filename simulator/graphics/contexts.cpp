#include "simulator/graphics/contexts.hpp"

#include <utility>
#include <vector>

namespace simulator {

namespace {

std::vector<GraphicsContext>& contexts()
{
    // Each thread draws into contexts of its own.
    static thread_local std::vector<GraphicsContext> stack;
    return stack;
}

} // namespace

GraphicsContext* currentGraphicsContext()
{
    return contexts().empty() ? nullptr : &contexts().back();
}

void pushGraphicsContext(GraphicsContext context)
{
    contexts().push_back(std::move(context));
}

void popGraphicsContext()
{
    if (!contexts().empty())
        contexts().pop_back();
}

} // namespace simulator
