#!/usr/bin/env python3
"""host_conformance.py OURS [OUT.cpp]: writes a C++ source that compiles only with headers that have what those in OURS declare.

OURS is a folder that holds `maya/`. The source asks, while it is compiled, for each class, function, enumerator and
constant with the same types, const, access and default arguments. How many there are goes to standard error.
"""
import collections
import pathlib
import sys

from host_headers import Function, Headers, Variable, joined

# Ours alone: the embedded host numbers lamberts as a later release of the SDK's year is known to.
OUR_ENUMERATORS = {"MFn::kLambert"}

PRELUDE = """\
// Generated: what the embedded host's public headers declare, asked of the headers that this is compiled with.
#include <concepts>
#include <type_traits>
#include <utility>

{includes}
namespace {{

/// An argument of one type and no other: what it is handed to takes that very type.
template<typename T>
struct Exactly {{
    template<std::same_as<T> U>
    operator U() const;
}};
template<typename T>
struct Exactly<T&> {{
    operator T&() const;
}};

template<typename T>
concept HasAddress = requires(T& object) {{ &object; }};

"""


class Writer:
    def __init__(self, headers):
        self.headers, self.lines, self.count = headers, [], collections.Counter()

    def say(self, line):
        self.lines.append(line)

    def unit(self):
        includes = "".join(f"#include <maya/{name}>\n" for name in self.headers.names if name != "MApiVersion.h")
        for header, words in self.headers.typedefs:
            self.typedef(words)
        for made in self.headers.classes.values():
            self.one_class(made)
        return PRELUDE.format(includes="#define MNoPluginEntry\n#define MNoVersionString\n" + includes) + "\n".join(
            self.lines) + "\n\n} // namespace\n"

    def typedef(self, words):
        self.count["types"] += 1
        name = words[words.index("(") + 2] if "(" in words else (words[words.index("[") - 1] if "[" in words else words[-1])
        self.say(f"namespace of_{name} {{ typedef {joined(words)}; }}")
        self.say(f"static_assert(std::is_same_v<of_{name}::{name}, ::{name}>);")

    def one_class(self, made):
        name = made.name
        self.count["classes"] += 1
        self.say(f"\n// {name}")
        for base in made.bases:
            self.say(f"static_assert(std::is_convertible_v<{name}*, {base}*>);")
        for enum in made.enums:
            self.enum(name, enum)
        functions = [m for m in made.members if isinstance(m, Function)]
        for member in made.members:
            if isinstance(member, Variable):
                if member.access == "public":
                    self.variable(name, member)
            elif member.access == "public" and not member.friend:
                self.function(made, member)
            elif member.friend:
                self.friend(member)
        self.copies(name, functions)
        virtual = [f for f in functions if f.virtual and f.access == "public" and not f.name.startswith("~")]
        if virtual:
            self.say(f"struct Derived{name} : {name} {{")
            for f in virtual:
                self.say(f"    {f.result} {f.name}({', '.join(p.type for p in f.parameters)})"
                         f"{' const' if f.const else ''} override;")
            self.say("};")
        if any(f.name.startswith("~") and f.virtual for f in functions):
            self.say(f"static_assert(std::has_virtual_destructor_v<{name}>);")

    def enum(self, name, enum):
        for item, value in enum.items:
            if f"{name}::{item}" in OUR_ENUMERATORS:
                continue
            self.count["enumerators"] += 1
            self.say(f"static_assert({name}::{item} == {value});")
            if enum.name:
                self.say(f"static_assert(std::is_same_v<decltype({name}::{item}), {name}::{enum.name}>);")

    def variable(self, name, v):
        self.count["constants" if v.static else "data members"] += 1
        self.say(f"static_assert(std::is_same_v<decltype({name}::{v.name}), {v.type}>);")

    def copies(self, name, functions):
        hidden = {f.name for f in functions if f.access == "private"}
        if "~" + name in hidden:
            self.say(f"static_assert(!std::is_destructible_v<{name}>);")
            return
        copy_hidden = any(f.name == name and f.access == "private" and len(f.parameters) == 1
                          and f.parameters[0].type == f"const {name} &" for f in functions)
        abstract = name == "MPxCommand"
        if not abstract:
            self.say(f"static_assert({'!' if copy_hidden else ''}std::is_copy_constructible_v<{name}>);")
        self.say(f"static_assert({'!' if 'operator=' in hidden else ''}std::is_copy_assignable_v<{name}>);")
        self.say(f"static_assert({'!' if 'operator&' in hidden else ''}HasAddress<{name}>);")

    def function(self, made, f):
        name = made.name
        self.count["functions"] += 1
        required = sum(p.default is None for p in f.parameters)
        types = [p.type for p in f.parameters]
        if f.name.startswith("~"):
            self.say(f"static_assert(std::is_destructible_v<{name}>);")
            return
        if f.name == name:
            if made.name in ("MPxCommand",):
                return
            for n in range(required, len(types) + 1):
                arguments = "".join(f", Exactly<{t}>" for t in types[:n])
                self.say(f"static_assert(std::is_constructible_v<{name}{arguments}>);")
            if not f.explicit and required <= 1 <= len(types):
                self.say(f"static_assert(std::is_convertible_v<{types[0]}, {name}>);")
            return
        owner = "(*)" if f.static else f"({name}::*)"
        const = " const" if f.const else ""
        self.say(f"static_assert(std::is_same_v<decltype(static_cast<{f.result} {owner}({', '.join(types)}){const}>"
                 f"(&{name}::{f.name})), {f.result} {owner}({', '.join(types)}){const}>);")
        if f.name.startswith("operator"):
            return
        for n in range(required, len(types)):
            self.count["default arguments"] += 1
            arguments = ", ".join(f"std::declval<{t}>()" for t in types[:n])
            self.say(f"static_assert(std::is_same_v<decltype(std::declval<{'const ' if f.const else ''}{name}&>()"
                     f".{f.name}({arguments})), {f.result}>);")
        if required and not self.callable_with(made, f.name, required - 1):
            self.fewer(made, f, types[: required - 1])

    def callable_with(self, made, name, n):
        """Whether some function of that name takes so many arguments."""
        for m in made.members:
            if isinstance(m, Function) and m.name == name and m.access == "public":
                required = sum(p.default is None for p in m.parameters)
                if required <= n <= len(m.parameters):
                    return True
        return False

    def fewer(self, made, f, types):
        arguments = ", ".join(f"std::declval<{t}>()" for t in types)
        self.say(f"static_assert(![]<typename T>(T*) {{ return requires(T& object) {{ object.{f.name}({arguments}); }}; "
                 f"}}(static_cast<{made.name}*>(nullptr)));")

    def friend(self, f):
        self.count["functions"] += 1
        arguments = ", ".join(f"std::declval<{p.type}>()" for p in f.parameters)
        self.say(f"static_assert(std::is_same_v<decltype({f.name}({arguments})), {f.result}>);")


def main():
    writer = Writer(Headers(pathlib.Path(sys.argv[1])))
    text = writer.unit()
    if len(sys.argv) > 2:
        pathlib.Path(sys.argv[2]).write_text(text)
    else:
        sys.stdout.write(text)
    print(", ".join(f"{n} {what}" for what, n in writer.count.most_common()), file=sys.stderr)


if __name__ == "__main__":
    main()
