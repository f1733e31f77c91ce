#pragma once

/// What Python has to know of the library's classes: their fields with names, kinds and places. All of it follows from
/// the records that the classes tell (format/core/record.h); nothing is listed again.

#include "support/types.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vor2::python {

using VOR2_LOADER::u32;
using VOR2_LOADER::u64;

struct ClassInfo;

/// Something that left a scene, as it is, and whoever still looks at it.
using Kept = std::shared_ptr<void>;

/// An owned object of a family, behind a pointer to its `OWNED`.
struct OptionalOperations {
    struct Object {
        void* address = nullptr; ///< of the whole object; null for an absent one
        const ClassInfo* info = nullptr;
    };
    Object (*get)(void* owned);
    /// Takes over an object of a class of this family, or null. Gives what was there.
    Kept (*exchange)(void* owned, void* object, const ClassInfo* info);
};

/// A list, behind a pointer to its `ARRAY`.
struct ListOperations {
    std::size_t stride;
    u64 (*size)(const void* list);
    u64 (*capacity)(const void* list);
    void* (*data)(void* list);
    /// Adds a default element.
    void (*append)(void* list);
    /// Makes a list of the elements with those indices, and of new ones where an index is negative, with room for
    /// `room`. Gives the old list: its block with the elements that were left out, and what moving left of the others.
    Kept (*rebuild)(void* list, std::span<const std::ptrdiff_t> order, u64 room);
    /// For numbers: a list of `count` elements whose bytes are copied. Gives the old list.
    Kept (*exchange)(void* list, const void* bytes, u64 count);
};

enum class Kind { boolean, number, tuple, matrix, text, texts, record, optional, numbers, records, optionals };

struct Field {
    std::string name;
    Kind kind;
    std::ptrdiff_t offset = 0; ///< from the start of the whole object
    bool stored = true;        ///< false for what isn't in the newest form of a file
    /// How the numbers of a value, a tuple or a list's element lie: their type as numpy writes it, how many, and for
    /// an element where the first one stands within it.
    char number = 0;
    u32 width = 1;
    std::ptrdiff_t lead = 0;
    const ClassInfo* (*record)() = nullptr;              ///< the class of a record or of a list's elements
    std::vector<const ClassInfo*> (*family)() = nullptr; ///< those that an optional object can have
    std::string holds; ///< that class or family by its name; empty for what isn't a record
    const ListOperations* list = nullptr;
    const OptionalOperations* optional = nullptr;
    void (*touched)(void* object) = nullptr; ///< to be called after a change of the field
};

struct ClassInfo {
    std::string name;
    std::vector<std::string> bases; ///< from the furthest to the nearest, which itself isn't among them
    std::vector<Field> fields;      ///< those of bases included, in file order
    void* (*create)() = nullptr;
    void (*destroy)(void* object) = nullptr;
    void* (*clone)(const void* object) = nullptr;
    bool (*equal)(const void* a, const void* b) = nullptr;
    /// Puts a copy of `from` into a member held by value. Gives what was there, with all that it owned.
    Kept (*exchange)(void* member, const void* from) = nullptr;
    const OptionalOperations* family = nullptr; ///< whose optionals take objects of this class
    void* (*to_family)(void* object) = nullptr;
    /// Of a track: its value at each time, `width` numbers each, as the clock gives it. The track isn't moved.
    void (*sample)(const void* track, std::span<const float> times, void* out) = nullptr;

    const Field* find(std::string_view field_name) const;
    /// Where all fields are numbers of one type that lie side by side: how they lie; else a width of 0.
    struct Numbers {
        char number = 0;
        u32 width = 0;
        std::ptrdiff_t lead = 0;
    };
    Numbers as_numbers() const;
};

/// Every class that can be made, in the order that their bases come first.
const std::vector<const ClassInfo*>& all_classes();
/// Nothing for a name that no class has. "VOR2_XREF<15>" is VOR2_XREF_15 here.
const ClassInfo* find_class(std::string_view name);

} // namespace vor2::python
