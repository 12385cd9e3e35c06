#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "simulator/foundation/phone_system.hpp"

/// What the class tables of real systems say: recorded_interface.tsv.
class RecordedInterface {
public:
    RecordedInterface();

    /// What one system's table, of one processor, says of a name.
    struct Cell {
        simulator::System system;
        /// Whether that processor's words are as wide as this machine's.
        bool isOfThisWidth;
        /// A superclass; a variable's type, or its class; a method's encoding, without offsets. "-" where the table lacks the
        /// name.
        std::string type;
        /// The superclass that a method is inherited from; empty for a method of the class's own.
        std::string inheritedFrom;
    };

    /// The cells for a name: those of the system's own table of that class, or where that is not known of all other systems'.
    /// The kind is "class", "variable", "-" for an instance method or "+" for a class method. Empty where the file lacks the
    /// name.
    std::vector<Cell> cells(simulator::System system, const std::string& cls, const std::string& kind,
                            const std::string& name) const;

    const std::set<std::string>& classes() const { return classes_; }
    /// Whether variables of that class are recorded; then all of them are, and all of its methods.
    bool hasVariables(const std::string& cls) const { return whole_.contains(cls); }

private:
    std::set<std::string> classes_;
    std::set<std::string> whole_;
    std::map<std::string, std::vector<Cell>> rows_;
};
