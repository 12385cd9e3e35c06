#include "simulator/loader/macho/exports.hpp"

#include <algorithm>
#include <functional>
#include <set>

#include "simulator/loader/macho/Processor.hpp"

namespace simulator::macho {

namespace {

/// Visits each name of an export trie with the address, relative to the library, that it stands for.
///
/// A node, which stands for the letters on the way to it:
///
///     +---------+---------+---------+----------+=========+=========+
///     | size    | flags   | address | edges    | label   | node    |
///     | ULEB128 | ULEB128 | ULEB128 | one byte | ... \0 | ULEB128 |
///     +---------+---------+---------+----------+=========+=========+
///               |<--- size bytes -->|          |<- for each edge ->|
///
/// The size is 0 where no name ends. An edge adds the letters of its label; its node lies so many bytes from the start of the
/// trie, where the first node is. So "_night" at 0x4010 and "_nightString" at 0x8020 are
///
///      0: | 0 | 1 | "_night" | 10 |
///     10: | 4 | 0 | 0x4010 | 1 | "String" | 24 |
///     24: | 4 | 0 | 0x8020 | 0 |
class ExportsWalk {
public:
    using Visit = std::function<void(const std::string&, Word)>;

    ExportsWalk(Bytes trie, Visit visit) : trie_(trie), visit_(std::move(visit)) {}

    void walk(std::size_t node, const std::string& name)
    {
        constexpr std::size_t longestName = 4096;
        // Each step adds to the name and comes to a node of its own, or the walk would not come to an end.
        if (name.size() > longestName || !visited_.insert(node).second)
            throw std::runtime_error("its table of exports is damaged");
        Reader reader(trie_, node);
        const std::uint64_t size = reader.uleb128();
        const std::size_t content = reader.offset();
        if (size != 0) {
            if (reader.uleb128() != EXPORT_SYMBOL_FLAGS_KIND_REGULAR)
                throw std::runtime_error("it exports in a way that is not known");
            visit_(name, reader.uleb128());
        }
        Reader children(trie_, content + size);
        for (std::uint8_t count = children.byte(); count != 0; --count) {
            const std::string label = children.text();
            walk(children.uleb128(), name + label);
        }
    }

private:
    Bytes trie_;
    Visit visit_;
    std::set<std::size_t> visited_;
};

bool isCode(const MachOFile& file, Word address)
{
    return std::ranges::any_of(file.segments(), [address](const segment_command& segment) {
        return (segment.initprot & VM_PROT_EXECUTE) != 0 && address - segment.vmaddr < segment.vmsize;
    });
}

} // namespace

std::vector<ExportedSymbol> readExports(const MachOFile& file, const Segments& segments)
{
    std::vector<ExportedSymbol> exports;
    if (file.exportsTrie().size() == 0)
        return exports;
    ExportsWalk walk(file.exportsTrie(), [&](const std::string& symbol, Word address) {
        if (!segments.holds(address, 1, VM_PROT_READ))
            throw std::runtime_error("it exports what lies outside of its segments");
        const bool isFunction = isCode(file, address);
        const bool canHoldObject = !isFunction && segments.holds(address, sizeof(Word), VM_PROT_READ);
        exports.push_back({symbol.starts_with('_') ? symbol.substr(1) : symbol,
                           isFunction ? thisProcessor.callableByThisMachine(segments.at(address)) : segments.at(address),
                           isFunction ? ExportedSymbol::Kind::function : ExportedSymbol::Kind::variable, canHoldObject});
    });
    walk.walk(0, "");
    return exports;
}

} // namespace simulator::macho
