#include "OmbrixPlatform/PropertyList.h"

#include <plist/plist.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "OmbrixPlatform/Utf8.h"

namespace ombrix::PropertyList {
namespace {

// libplist builds and frees its tree recursively and copies an object for each reference to it, so
// a small file can be nested deeper than the stack or expand to more nodes than there is memory.
// The property list of a bundle is far below these limits; libplist never sees one above them.
constexpr std::size_t maximalContainers = 4096;
constexpr std::size_t maximalDepth = 512;
/// Nodes and bytes, with each reference counted as a copy.
constexpr std::uint64_t maximalCost = std::uint64_t{4} << 20;

constexpr std::string_view binaryMagic = "bplist00";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Measures what libplist would build from a binary property list, without building it. The file
/// is the magic bytes, the objects, a table of their offsets, and a trailer with the position of
/// that table. Containers refer to their elements by number.
class BinaryShape {
  public:
    explicit BinaryShape(std::string_view bytes) : bytes_(bytes) {}

    /// True when everything the root refers to is inside the file and within the limits.
    bool isHarmless() {
        if (!readTrailer()) return false;
        std::uint64_t cost = 0;
        pending_.push_back({root_, 0});
        while (!pending_.empty()) {
            const Pending next = pending_.back();
            pending_.pop_back();
            const auto added = costOf(next);
            if (!added) return false;
            cost += *added;
            if (cost + pending_.size() > maximalCost) return false;
        }
        return true;
    }

  private:
    struct Pending {
        std::uint64_t object;
        std::size_t depth;
    };
    enum Kind : unsigned {
        data = 0x4,
        ascii = 0x5,
        utf16 = 0x6,
        array = 0xA,
        set = 0xC,
        dict = 0xD
    };

    std::optional<std::uint64_t> number(std::uint64_t at, unsigned size) const {
        if (size == 0 || size > 8 || at > bytes_.size() || bytes_.size() - at < size)
            return std::nullopt;
        std::uint64_t value = 0;
        for (unsigned i = 0; i < size; ++i)
            value = value << 8 | static_cast<std::uint8_t>(bytes_[at + i]);
        return value;
    }

    bool readTrailer() {
        constexpr std::size_t trailerSize = 32;
        if (bytes_.size() < binaryMagic.size() + trailerSize) return false;
        const std::size_t trailer = bytes_.size() - trailerSize;
        placeSize_ = static_cast<std::uint8_t>(bytes_[trailer + 6]);
        referenceSize_ = static_cast<std::uint8_t>(bytes_[trailer + 7]);
        objects_ = *number(trailer + 8, 8);
        root_ = *number(trailer + 16, 8);
        places_ = *number(trailer + 24, 8);
        return objects_ <= bytes_.size() && places_ <= bytes_.size();
    }

    /// The cost of the object itself; its elements are pushed on the stack. Nothing when it exceeds
    /// a limit or is outside the file.
    std::optional<std::uint64_t> costOf(const Pending& item) {
        if (item.object >= objects_ || item.depth > maximalDepth) return std::nullopt;
        const auto place = number(places_ + item.object * placeSize_, placeSize_);
        if (!place || *place >= bytes_.size()) return std::nullopt;
        std::uint64_t at = *place;
        const unsigned marker = static_cast<std::uint8_t>(bytes_[at++]);
        const unsigned kind = marker >> 4;
        const bool isContainer = kind == array || kind == set || kind == dict;
        if (!isContainer && kind != data && kind != ascii && kind != utf16) return 1;
        std::uint64_t count = marker & 0xF;
        if (count == 0xF) {  // the count follows as an integer object
            const auto sizeMarker = number(at, 1);
            if (!sizeMarker || *sizeMarker >> 4 != 1) return std::nullopt;
            const unsigned size = 1U << (*sizeMarker & 0xF);
            const auto longCount = number(at + 1, size);
            if (!longCount) return std::nullopt;
            count = *longCount;
            at += 1 + size;
        }
        if (count > bytes_.size()) return std::nullopt;
        if (!isContainer) return 1 + count * (kind == utf16 ? 3 : 1);
        const std::uint64_t references = kind == dict ? count * 2 : count;
        for (std::uint64_t i = 0; i < references; ++i) {
            const auto object = number(at + i * referenceSize_, referenceSize_);
            if (!object || pending_.size() > maximalCost) return std::nullopt;
            pending_.push_back({*object, item.depth + 1});
        }
        return 1;
    }

    std::string_view bytes_;
    unsigned placeSize_ = 0;
    unsigned referenceSize_ = 0;
    std::uint64_t objects_ = 0;
    std::uint64_t root_ = 0;
    std::uint64_t places_ = 0;
    std::vector<Pending> pending_;
};

/// Counts everything that could open a container. End tags are not subtracted, because one in a
/// comment would hide the real depth.
bool isShallowXml(std::string_view bytes) {
    std::size_t opened = 0;
    for (std::size_t at = bytes.find('<'); at != std::string_view::npos;
         at = bytes.find('<', at + 1)) {
        const std::string_view tag = bytes.substr(at + 1, 5);
        if (tag.starts_with("dict") || tag == "array" || tag == "plist") ++opened;
    }
    return opened <= maximalContainers;
}

struct FreeTree {
    void operator()(void* tree) const { plist_free(tree); }
};
using Tree = std::unique_ptr<void, FreeTree>;

Tree parse(std::string_view bytes) {
    if (bytes.starts_with(byteOrderMark)) bytes.remove_prefix(byteOrderMark.size());
    if (bytes.empty() || bytes.size() > largestSize) return nullptr;
    plist_t tree = nullptr;
    const auto length = static_cast<std::uint32_t>(bytes.size());
    if (bytes.starts_with(binaryMagic)) {
        if (BinaryShape(bytes).isHarmless()) plist_from_bin(bytes.data(), length, &tree);
    } else if (isShallowXml(bytes)) {
        plist_from_xml(bytes.data(), length, &tree);
    }
    return Tree(tree);
}
}  // namespace

std::optional<std::string> string(std::string_view bytes, std::string_view key) {
    const Tree tree = parse(bytes);
    if (!tree || plist_get_node_type(tree.get()) != PLIST_DICT) return std::nullopt;
    plist_t node = plist_dict_get_item(tree.get(), std::string(key).c_str());
    if (node == nullptr || plist_get_node_type(node) != PLIST_STRING) return std::nullopt;
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    if (text == nullptr) return std::nullopt;
    std::string value(text, length);
    if (!Utf8::isValid(value)) return std::nullopt;
    return value;
}
}  // namespace ombrix::PropertyList
