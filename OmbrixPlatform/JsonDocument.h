// A JSON text that was read, for those who look at it where it is: no copy is made of its strings
// and lists. JsonDecoding.h reads records on top of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "OmbrixPlatform/Json.h"

namespace ombrix::Json {

/// The text is not JSON.
class SyntaxError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

constexpr std::size_t maximalDepth = 512;

class Document;

/// One value of a document; a handle of two words, valid as long as the `Document`.
class Node {
  public:
    bool isNull() const;
    bool isList() const;
    bool isObject() const;
    /// The content when it is of that kind, else nothing. The string is the document's.
    std::optional<bool> boolean() const;
    std::optional<std::int64_t> integer() const;  ///< 3 and 3.0, not 3.5
    std::optional<double> number() const;
    std::optional<std::string_view> string() const;
    /// The member of that key, the last one when it is there twice; nothing for a missing key and
    /// for a value that is no object. Linear in the members.
    std::optional<Node> member(std::string_view key) const;

    using Member = std::pair<std::string_view, Node>;
    template <typename Entry>
    class Range;
    /// The items of a list, for a range-based loop; none for anything else.
    Range<Node> items() const;
    /// The members of an object in the order of the text; none for anything else.
    Range<Member> members() const;

    /// A copy of it all.
    Value value() const;

  private:
    friend struct NodeAccess;
    /// What the parser knows a place in a document by; made and read in JsonDocument.cpp alone.
    struct Handle {
        const void* document = nullptr;
        std::size_t place = 0;
    };
    explicit Node(Handle handle) : handle_(handle) {}

    Handle handle_;
};

/// Items of a list or members of an object, each made when it is asked for.
template <typename Entry>
class Node::Range {
  public:
    struct End {};
    class Iterator {
      public:
        Entry operator*() const;
        Iterator& operator++();
        bool operator==(End) const { return at_.place == end_.place; }

      private:
        friend class Range;
        Iterator(Handle at, Handle end) : at_(at), end_(end) {}
        Handle at_, end_;
    };
    Iterator begin() const { return Iterator(begin_, end_); }
    End end() const { return {}; }

  private:
    friend struct NodeAccess;
    Range(Handle begin, Handle end) : begin_(begin), end_(end) {}
    Handle begin_, end_;
};

/// A whole text, read and checked. Needs about three times the bytes of the text while it lives.
class Document {
  public:
    /// Throws `SyntaxError` for what is not JSON in valid UTF-8, a byte order mark and anything
    /// after the value included, for nesting deeper than `maximalDepth`, and for a number outside
    /// the range of a double. Copies `text`. An integer that does not fit 64 bits is a double.
    explicit Document(std::string_view text);
    ~Document();
    Document(Document&&) noexcept;
    Document& operator=(Document&&) noexcept;

    Node root() const&;
    Node root() const&& = delete;  // it would not outlive the document

  private:
    friend class Parser;
    struct Parsed;
    std::unique_ptr<Parsed> parsed_;
};

/// Reads one short text after the other with the same memory, which grows to fit the longest.
class Parser {
  public:
    Parser();
    ~Parser();
    Parser(Parser&&) noexcept;
    Parser& operator=(Parser&&) noexcept;

    /// The root of a text, valid until the next call. Throws as `Document`.
    Node parse(std::string_view text);

  private:
    std::string buffer_;  // the text and the bytes after it that the parser may touch
    std::unique_ptr<Document::Parsed> parsed_;
};

/// The value of a whole text; throws as `Document`. Of a key given twice the last one counts.
Value parse(std::string_view text);
}  // namespace ombrix::Json
