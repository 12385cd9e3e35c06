#pragma once

#include <nlohmann/json.hpp>

#include "platform/UIKit/UIView.hpp"
#include "simulator/console/value.hpp"

/// What values and objects look like as JSON (docs/console.md has the forms).
namespace simulator {

using Json = nlohmann::ordered_json;

Json inspect(const Value& value);

/// A view with all the views below it, each with the name of the exported variable that holds it; nil gives null.
Json inspectTree(UIView* view);

} // namespace simulator
