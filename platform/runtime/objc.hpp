#pragma once

#include "platform/runtime/types.hpp"

/// One of the attributes of a property: its letter, and what follows the letter.
struct objc_property_attribute_t {
    const char* name;
    const char* value;
};

struct objc_method_description {
    SEL name;
    char* types;
};

/// The C interface of the object runtime ("Objective-C Runtime", Apple), as far as it is used here. Where a desk's
/// runtime lacks one of these, the simulator exports it under the same name.
#pragma GCC visibility push(default)
extern "C" {

/// Nil when no class of that name is loaded.
Class objc_getClass(const char* name);
SEL sel_registerName(const char* name);
const char* sel_getName(SEL selector);

Class object_getClass(id object);
const char* class_getName(Class cls);
/// The path of the file that brought the class, null for a class that was made at run time.
const char* class_getImageName(Class cls);
/// Whether it is the class of a class.
BOOL class_isMetaClass(Class cls);
Class class_getSuperclass(Class cls);
std::size_t class_getInstanceSize(Class cls);

/// Null when neither the class nor a superclass declares the variable.
Ivar class_getInstanceVariable(Class cls, const char* name);
/// Bytes from the start of the object.
std::ptrdiff_t ivar_getOffset(Ivar ivar);
const char* ivar_getTypeEncoding(Ivar ivar);

Method class_getInstanceMethod(Class cls, SEL selector);
Method class_getClassMethod(Class cls, SEL selector);
IMP class_getMethodImplementation(Class cls, SEL selector);
IMP method_getImplementation(Method method);
/// Gives the implementation that was replaced.
IMP method_setImplementation(Method method, IMP implementation);
const char* method_getTypeEncoding(Method method);

Class objc_allocateClassPair(Class superclass, const char* name, std::size_t extraBytes);
void objc_registerClassPair(Class cls);
/// `alignment` is the exponent of a power of two.
BOOL class_addIvar(Class cls, const char* name, std::size_t size, std::uint8_t alignment, const char* types);
/// NO, and no change, when the class itself already has a method for the selector.
BOOL class_addMethod(Class cls, SEL selector, IMP implementation, const char* types);
BOOL class_respondsToSelector(Class cls, SEL selector);

/// NO, and no change, when the class itself already has a property of that name.
BOOL class_addProperty(Class cls, const char* name, const objc_property_attribute_t* attributes, unsigned count);
/// Null when neither the class nor a superclass declares the property.
objc_property* class_getProperty(Class cls, const char* name);
/// In the notation of compilers ("Declared Properties", Objective-C Runtime Programming Guide).
const char* property_getAttributes(objc_property* property);

/// Nil when no protocol of that name is loaded.
objc_protocol* objc_getProtocol(const char* name);
/// Nil when there is a protocol of that name already.
objc_protocol* objc_allocateProtocol(const char* name);
void objc_registerProtocol(objc_protocol* protocol);
/// Before it is registered.
void protocol_addProtocol(objc_protocol* protocol, objc_protocol* adopted);
void protocol_addMethodDescription(objc_protocol* protocol, SEL selector, const char* types, BOOL isRequired, BOOL isInstance);
/// Nulls when neither the protocol nor one that it adopts has such a method.
objc_method_description protocol_getMethodDescription(objc_protocol* protocol, SEL selector, BOOL isRequired, BOOL isInstance);
BOOL class_addProtocol(Class cls, objc_protocol* protocol);

id objc_retain(id object);
void objc_release(id object);
id objc_autorelease(id object);

/// Zeroing weak references: a slot reads nil from the moment its object starts to be deallocated.
id objc_storeWeak(id* slot, id object);
/// Gives a reference that the caller owns.
id objc_loadWeakRetained(id* slot);
void objc_destroyWeak(id* slot);

void* objc_autoreleasePoolPush(void);
void objc_autoreleasePoolPop(void* pool);

/// The recursive lock keyed by an object.
int objc_sync_enter(id object);
int objc_sync_exit(id object);

/// Raises the error of a collection that changed while it was walked.
void objc_enumerationMutation(id collection);
}
#pragma GCC visibility pop
