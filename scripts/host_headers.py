"""Reads the declarations in the public headers of the embedded host.

This is no C++ parser: it reads the plain style that those headers are written in, and stops where it meets another.
"""
import collections
import re

TOKEN = re.compile(r"""[A-Za-z_]\w*|0[xX][0-9a-fA-F]+u?|\d[\w.]*(?:[eE][-+]?\d+)?\w*|"(?:\\.|[^"\\])*"|'(?:\\.|[^'\\])*'|::|->|<<|[^\s]""")
TYPE_WORDS = {"const", "unsigned", "int", "char", "short", "long", "float", "double", "bool", "void", "signed", "wchar_t"}

Parameter = collections.namedtuple("Parameter", "type default")
Function = collections.namedtuple("Function", "name result parameters const static virtual explicit access friend")
Variable = collections.namedtuple("Variable", "name type static access")
Enum = collections.namedtuple("Enum", "name items access")


def without_comments(text):
    """The text without comments, and without what stands for Windows alone."""
    text = re.sub(r"#if defined\(_WIN32\)(.*?)#else(.*?)#endif", r"\2", text, flags=re.S)
    text = re.sub(r"/\*.*?\*/", " ", text, flags=re.S)
    return re.sub(r"//[^\n]*", "", text)


def tokens_of(text):
    lines = text.replace("\\\n", " ").split("\n")
    return TOKEN.findall("\n".join(line for line in lines if not line.lstrip().startswith("#")))


def closing(tokens, at):
    """The index of the bracket that closes the one at `at`."""
    pairs = {"(": ")", "{": "}", "[": "]"}
    depth = 0
    for i in range(at, len(tokens)):
        depth += (tokens[i] in pairs) - (tokens[i] in pairs.values())
        if depth == 0:
            return i
    raise SystemExit("An unclosed " + tokens[at])


def split_at_commas(tokens):
    out, depth = [[]], 0
    for token in tokens:
        depth += (token in "([{<") - (token in ")]}>")
        if token == "," and depth == 0:
            out.append([])
        else:
            out[-1].append(token)
    return [piece for piece in out if piece]


def joined(tokens):
    text = " ".join(tokens)
    return re.sub(r" ?:: ?", "::", text)


class Class:
    def __init__(self, name, header, bases):
        self.name, self.header, self.bases = name, header, bases
        self.members, self.enums, self.private = [], [], set()

    def nested(self):
        return {enum.name for enum in self.enums if enum.name}


class Headers:
    """The declarations of all headers in a folder."""

    def __init__(self, folder):
        self.classes, self.free, self.typedefs, self.names = {}, [], [], []
        self.array_members = None
        self.read_arrays(folder / "maya/detail/array_of.h")
        for path in sorted((folder / "maya").glob("*.h")):
            self.names.append(path.name)
            self.read(tokens_of(without_comments(path.read_text())), path.name)

    def read_arrays(self, path):
        if not path.exists():
            return
        tokens = tokens_of(without_comments(path.read_text()))
        at = tokens.index("class")
        body = tokens.index("{", at)
        self.array_members = tokens[body + 1 : closing(tokens, body)]

    def read(self, tokens, header):
        at = 0
        while at < len(tokens):
            token = tokens[at]
            if token in ("namespace", "extern"):
                at = closing(tokens, tokens.index("{", at)) + 1
            elif token in ("class", "struct"):
                end = min(tokens.index(";", at), tokens.index("{", at) if "{" in tokens[at:] else len(tokens))
                if tokens[end] == "{":
                    self.read_class(tokens[at:end], tokens[end + 1 : closing(tokens, end)], header)
                    end = closing(tokens, end) + 1
                at = end + 1
            elif token == "typedef":
                end = tokens.index(";", at)
                self.typedefs.append((header, tokens[at + 1 : end]))
                at = end + 1
            else:
                at = tokens.index(";", at) + 1

    def read_class(self, head, body, header):
        name = head[1]
        made = Class(name, header, [])
        self.classes[name] = made
        if ":" in head:
            base = head[head.index(":") + 1 :]
            if "ArrayOf" in base:
                arguments = [joined(a) for a in split_at_commas(base[base.index("<") + 1 : -1])]
                words = dict(zip(("Array", "Element", "Argument", "Answer"), arguments))
                words.setdefault("Argument", f"const {words['Element']}&")
                words.setdefault("Answer", f"const {words['Element']}&")
                taken = []
                for token in self.array_members:
                    taken += TOKEN.findall(words[token]) if token in words else [token]
                self.read_members(made, [t for t in taken if t != "ArrayOf"], arrays=True)
            else:
                made.bases.append(base[-1])
        self.read_members(made, body)

    def read_members(self, made, tokens, arrays=False):
        access, at = "private", 0
        while at < len(tokens):
            if tokens[at] in ("public", "private", "protected"):
                access, at = tokens[at], at + 2
                continue
            start, has_body = at, False
            while tokens[at] != ";":
                if tokens[at] in "([":
                    at = closing(tokens, at)
                elif tokens[at] == "{":
                    at = closing(tokens, at)
                    head = tokens[start:at]
                    is_function = "(" in head and ("operator" in head or "=" not in self.outside(head))
                    if is_function:
                        has_body = True
                        break
                at += 1
            statement = tokens[start:at + (1 if has_body else 0)]
            at += 1
            if statement and not (arrays and access != "public"):
                self.member(made, statement, access)

    @staticmethod
    def outside(tokens):
        """What stands outside of all brackets."""
        out, depth = [], 0
        for token in tokens:
            depth += token in "([{"
            if depth == 0:
                out.append(token)
            depth -= token in ")]}"
        return out

    def member(self, made, statement, access):
        if statement[0] == "enum":
            self.enum(made, statement, access)
        elif statement[0] in ("using", "typedef") or statement[:2] in (["friend", "struct"], ["friend", "class"]):
            return
        elif "(" in statement and "=" not in self.outside(statement[: statement.index("(")]) or "operator" in statement:
            self.function(made, statement, access)
        elif statement[0] not in ("struct", "class"):
            self.variables(made, statement, access)

    def enum(self, made, statement, access):
        body = statement[statement.index("{") + 1 : -1]
        name = statement[1] if statement[1] != "{" else ""
        items, value, known = [], -1, {}
        for item in split_at_commas(body):
            value += 1
            if "=" in item:
                expression = item[item.index("=") + 1 :]
                value = known[expression[0]] if expression[0] in known else int("".join(expression).rstrip("u"), 0)
            known[item[0]] = value
            items.append((item[0], value))
        made.enums.append(Enum(name, items, access))

    def variables(self, made, statement, access):
        static = statement[0] == "static"
        pieces = split_at_commas(statement[static:])
        if not pieces:
            return
        first = self.outside(pieces[0])
        first = first[: first.index("=")] if "=" in first else first
        kind = first[:-1]
        for i, piece in enumerate(pieces):
            words = piece[len(kind) :] if i == 0 else piece
            extents = ""
            for j, word in enumerate(words):
                if word == "=":
                    break
                if word == "[":
                    extents += f"[{words[j + 1]}]"
            made.members.append(Variable(words[0], self.qualified(made, kind) + extents, static, access))

    def function(self, made, statement, access):
        words, flags = list(statement), set()
        while words[0] in ("static", "virtual", "explicit", "friend", "inline"):
            flags.add(words.pop(0))
        if "operator" in words:
            mark = words.index("operator")
            opening = words.index("(", mark + (2 if words[mark + 1 : mark + 3] == ["(", ")"] else 0) + 1)
            if words[mark + 1] == "(":
                opening = mark + 3
            name = "operator" + (" " if words[mark + 1].isalpha() else "") + "".join(words[mark + 1 : opening])
        else:
            opening = words.index("(")
            mark = opening - 1
            name = words[mark]
            if mark and words[mark - 1] == "~":
                mark, name = mark - 1, "~" + name
        end = closing(words, opening)
        parameters = [self.parameter(made, piece) for piece in split_at_commas(words[opening + 1 : end])]
        tail = self.outside(words[end + 1 :])
        result = self.qualified(made, words[:mark]) if mark else (name[9:] if name.startswith("operator ") else "")
        made.members.append(
            Function(name, result, parameters, "const" in tail[:1], "static" in flags,
                     "virtual" in flags or "override" in tail, "explicit" in flags, access, "friend" in flags))

    def parameter(self, made, words):
        default = None
        if "=" in words:
            default = joined(words[words.index("=") + 1 :])
            words = words[: words.index("=")]
        extents = 0
        while words[-1] == "]":
            opening = len(words) - 1 - words[::-1].index("[")
            extents += 1
            inner = words[opening + 1 : -1]
            words = words[:opening]
            if extents == 1:
                last = inner
            else:
                last = last if last else inner
        names = [i for i, w in enumerate(words) if re.match(r"[A-Za-z_]", w)]
        tail = words[-1]
        if (re.match(r"[A-Za-z_]", tail) and tail not in TYPE_WORDS and len(names) > 1 and words[-2] != "::"
                and [w for w in words[:-1] if w != "const"]):
            words = words[:-1]
        kind = self.qualified(made, words)
        if extents == 1:
            kind += " *"
        elif extents == 2:
            kind += f" (*)[{last[0]}]"
        return Parameter(kind, default)

    def qualified(self, made, words):
        """A type as one outside of the class writes it."""
        out = []
        for i, word in enumerate(words):
            owner = self.owner_of(made, word)
            bare = (i == 0 or words[i - 1] != "::") and owner
            out.append(f"{owner}::{word}" if bare else word)
        return joined(out)

    def owner_of(self, made, word):
        if word in made.nested():
            return made.name
        for base in made.bases:
            if base in self.classes:
                owner = self.owner_of(self.classes[base], word)
                if owner:
                    return owner
        return None
