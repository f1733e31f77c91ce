#pragma once

/// The spaces in which values of a transform are stated.
class MSpace {
public:
    enum Space {
        kInvalid = 0,
        kTransform = 1,    ///< the node's own values
        kPreTransform = 2, ///< before the node's transformation
        kObject = kPreTransform,
        kPostTransform = 3, ///< after it: the parent's space
        kWorld = 4,
        kLast
    };
};
