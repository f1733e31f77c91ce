#pragma once

#include <maya/detail/held.h>

class MDagPath;
class MString;
class MSyntax;

// What a holder does, for the one source that instantiates it: there its value's class is known.
namespace headless {

class SelectionList;
struct DagWalk;
struct MeshInUse;
struct ParsedArguments;
struct SyntaxTable;
struct WayOfInstance;
struct Words;

template<typename T>
Held<T>::Held(const Held& other) : value_(other.value_ ? new T(*other.value_) : nullptr) {}

template<typename T>
Held<T>& Held<T>::operator=(const Held& other) {
    if (this == &other) return *this;
    if (!other.value_)
        forget();
    else
        **this = *other.value_;
    return *this;
}

template<typename T>
Held<T>::~Held() {
    delete value_;
}

template<typename T>
const T& Held<T>::operator*() const {
    static const T fresh{};
    return value_ ? *value_ : fresh;
}

template<typename T>
T& Held<T>::operator*() {
    if (!value_) value_ = new T();
    return *value_;
}

template<typename T>
void Held<T>::forget() {
    delete value_;
    value_ = nullptr;
}

extern template class Held<DagWalk>;
extern template class Held<MDagPath>;
extern template class Held<MeshInUse>;
extern template class Held<MString>;
extern template class Held<MSyntax>;
extern template class Held<ParsedArguments>;
extern template class Held<SelectionList>;
extern template class Held<SyntaxTable>;
extern template class Held<WayOfInstance>;
extern template class Held<Words>;

} // namespace headless
