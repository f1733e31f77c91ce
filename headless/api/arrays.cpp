// The arrays, and their elements in memory.
#include <maya/MColorArray.h>
#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MIntArray.h>
#include <maya/MMatrixArray.h>
#include <maya/MObjectArray.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MPointArray.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MTimeArray.h>
#include <maya/MUintArray.h>
#include <maya/MVectorArray.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace headless {

// Told with the template's parameters once, and not again at each of its members.
#define OF_ARRAY template<typename Array, typename Element, typename Argument, typename Answer>
#define ARRAY ArrayOf<Array, Element, Argument, Answer>

OF_ARRAY ARRAY::ArrayOf(const ArrayOf& other) : ArrayOf(other.items_, other.length_) {}

OF_ARRAY ARRAY::ArrayOf(const Element source[], unsigned int count) {
    reserve(count);
    std::copy(source, source + count, items_);
    length_ = count;
}

OF_ARRAY ARRAY::ArrayOf(unsigned int length, Argument value) {
    reserve(length);
    std::fill(items_, items_ + length, value);
    length_ = length;
}

OF_ARRAY ARRAY& ARRAY::operator=(const ArrayOf& other) {
    if (this == &other) return *this;
    length_ = 0;
    reserve(other.length_);
    std::copy(other.items_, other.items_ + other.length_, items_);
    length_ = other.length_;
    return *this;
}

OF_ARRAY ARRAY::~ArrayOf() {
    delete[] items_;
}

OF_ARRAY Element& ARRAY::spare() {
    thread_local Element spare;
    return spare = Element();
}

OF_ARRAY void ARRAY::copy_to(Element out[]) const {
    std::copy(items_, items_ + length_, out);
}

// Never less than asked for, and by half again at least, so that many appends cost as much as one by one should.
OF_ARRAY void ARRAY::reserve(unsigned int room) {
    if (room <= room_) return;
    const std::size_t grown = std::max<std::size_t>(room, std::size_t{room_} + room_ / 2);
    std::unique_ptr<Element[]> items(new Element[grown]());
    std::move(items_, items_ + length_, items.get());
    delete[] items_;
    items_ = items.release();
    room_ = static_cast<unsigned int>(grown);
}

OF_ARRAY MStatus ARRAY::setLength(unsigned int length) {
    reserve(length);
    // What a shorter list let go of doesn't come back with a longer one.
    if (length > length_) std::fill(items_ + length_, items_ + length, Element());
    length_ = length;
    return MStatus::kSuccess;
}

OF_ARRAY MStatus ARRAY::set(Argument element, unsigned int index) {
    if (index >= length_) return MStatus::kInvalidParameter;
    items_[index] = element;
    return MStatus::kSuccess;
}

OF_ARRAY MStatus ARRAY::append(Argument element) {
    return insert(element, length_);
}

OF_ARRAY MStatus ARRAY::insert(Argument element, unsigned int index) {
    if (index > length_) return MStatus::kInvalidParameter;
    const Element taken = element; // which may be one of these
    reserve(length_ + 1);
    std::move_backward(items_ + index, items_ + length_, items_ + length_ + 1);
    items_[index] = taken;
    ++length_;
    return MStatus::kSuccess;
}

OF_ARRAY MStatus ARRAY::remove(unsigned int index) {
    if (index >= length_) return MStatus::kInvalidParameter;
    std::move(items_ + index + 1, items_ + length_, items_ + index);
    --length_;
    items_[length_] = Element();
    return MStatus::kSuccess;
}

OF_ARRAY MStatus ARRAY::clear() {
    length_ = 0;
    return MStatus::kSuccess;
}

#undef OF_ARRAY
#undef ARRAY

template class ArrayOf<MColorArray, MColor>;
template class ArrayOf<MDagPathArray, MDagPath>;
template class ArrayOf<MDoubleArray, double, double, double>;
template class ArrayOf<MFloatArray, float, float, float>;
template class ArrayOf<MFloatVectorArray, MFloatVector>;
template class ArrayOf<MIntArray, int, int, int>;
template class ArrayOf<MMatrixArray, MMatrix>;
template class ArrayOf<MObjectArray, MObject>;
template class ArrayOf<MPlugArray, MPlug>;
template class ArrayOf<MPointArray, MPoint>;
template class ArrayOf<MStringArray, MString, const MString&, MString>;
template class ArrayOf<MTimeArray, MTime>;
template class ArrayOf<MUintArray, unsigned int, unsigned int, unsigned int>;
template class ArrayOf<MVectorArray, MVector>;

} // namespace headless
