#pragma once

#include <maya/MStatus.h>

namespace headless {

/// What the host's arrays have in common: `Argument` is how an element is handed in, `Answer` how one that can't be
/// changed comes out. An index past the end reads, and writes to, a spare element. Some of the headers only name
/// their element's class, so what needs its size stands in `headless/api/arrays.cpp`.
template<typename Array, typename Element, typename Argument = const Element&, typename Answer = const Element&>
class ArrayOf {
public:
    Element& operator[](unsigned int index) { return index < length_ ? items_[index] : spare(); }
    Answer operator[](unsigned int index) const { return index < length_ ? items_[index] : spare(); }
    unsigned int length() const { return length_; }
    MStatus setLength(unsigned int length);
    MStatus set(Argument element, unsigned int index);
    MStatus append(Argument element);
    /// Puts an element before the one at the index, which may be the length.
    MStatus insert(Argument element, unsigned int index);
    MStatus remove(unsigned int index);
    MStatus clear();
    void setSizeIncrement(unsigned int) {}
    unsigned int sizeIncrement() const { return 1; }

protected:
    ArrayOf() = default;
    ArrayOf(const ArrayOf& other);
    ArrayOf(const Element source[], unsigned int count);
    ArrayOf(unsigned int length, Argument value);
    ArrayOf& operator=(const ArrayOf& other);
    ~ArrayOf();
    void copy_to(Element out[]) const;

private:
    static Element& spare();
    void reserve(unsigned int room);

    Element* items_ = nullptr;
    unsigned int length_ = 0, room_ = 0;
};

} // namespace headless
