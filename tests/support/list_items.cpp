#include "tests/support/list_items.hpp"

#include "tests/support/Phone.hpp"

Owned<NSMutableArray> arrayOf(const std::vector<NSObject*>& objects)
{
    Owned<NSMutableArray> array = adopt(NSMutableArray::alloc()->init());
    for (NSObject* object : objects)
        array->addObject(object);
    return array;
}

Owned<NSObject> notification(const std::string& bundleIdentifier)
{
    return simulator::bulletinItem(text(bundleIdentifier), nullptr, nullptr);
}

void notify(const std::string& bundleIdentifier)
{
    simulator::addListItem(notification(bundleIdentifier));
}
