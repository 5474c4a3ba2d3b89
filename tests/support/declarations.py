"""What the public headers declare, for tests of what must cover all of it."""

import re


def declarations(text):
    """Class (or None), name and kind (class, call or field) of what the text of a header declares publicly."""
    text = re.sub(r"^ *#.*(\\\n.*)*$|//.*$", "", text, flags=re.M)
    contexts, statement, i = [], "", 0

    def told(statement):
        inside = contexts[-1] if contexts else ["namespace", None, "public"]
        if (
            inside[0] == "enum"
            or inside[2] != "public"
            or re.match(r"\s*(using|friend|template class|extern)\b", statement)
        ):
            return
        head = re.sub(r"\[\[.*?\]\]|template <[^>]*>|\bCRV_\w+\b(\([^;]*\))?|= \w.*", "", statement)
        called = re.search(r"(\w+)\s*\(", head)
        if called and "operator" not in head:
            yield inside[1], called[1], "call"
        elif inside[0] == "struct" and head.strip() and "operator" not in head and "<" != head.strip()[-1]:
            for field in re.findall(r"(\w+)(?=\s*(?:,|$))", re.sub(r"<.*>", "", head)):
                yield inside[1], field, "field"

    while i < len(text):
        c = text[i]
        i += 1
        if c == ":" and re.search(r"\b(public|private|protected)$", statement):
            contexts[-1][2] = statement.split()[-1]
            statement = ""
        elif c == "{":
            kind = re.search(
                r"\b(namespace|enum|class|struct)\b(?:\s+class)?(?:\s+CRV_API)?\s+([\w:<>]+)",
                re.sub(r"template <.*?>", "", statement),
            )
            if kind and "(" not in statement:
                if kind[1] != "namespace":
                    yield None, kind[2], "class"
                contexts.append(
                    [
                        kind[1],
                        None if kind[1] == "namespace" else kind[2],
                        "private" if kind[1] == "class" else "public",
                    ]
                )
            else:
                yield from told(statement)
                depth = 1
                while depth:
                    depth += (text[i] == "{") - (text[i] == "}")
                    i += 1
            statement = ""
        elif c == "}":
            contexts.pop()
            statement = ""
        elif c == ";":
            yield from told(statement)
            statement = ""
        else:
            statement += c
