#!/usr/bin/env python3
"""Writes the generated layer of the entity classes from an object model.

usage: generate_entities.py MODEL OUTPUT_FOLDER [--list]

For every entity NAME of MODEL (a "mom" file) it writes _NAME.h and _NAME.cpp: the base class _NAME with accessors, and
the constants NAMEAttributes and NAMERelationships. ManagedObjectFactories.h/.cpp tell which class stands for which
entity. With --list it only prints the names of the files, separated by ";".
"""

import json
import os
import sys

BANNER = "// Written by generate_entities.py from the object model. Do not edit.\n"

TYPES = {
    # type: (getter's type, parameter's type, reader)
    "boolean": ("bool", "bool", "boolAtSlot({slot})"),
    "int16": ("qint16", "qint16", "static_cast<qint16>(integerAtSlot({slot}))"),
    "int64": ("qint64", "qint64", "integerAtSlot({slot})"),
    "double": ("double", "double", "doubleAtSlot({slot})"),
    "date": ("std::optional<NSDate>", "std::optional<NSDate>", "dateAtSlot({slot})"),
    "string": ("QString", "const QString &", "stringAtSlot({slot})"),
    "binary": ("QByteArray", "const QByteArray &", "bytesAtSlot({slot})"),
}
NUMBERS = ("boolean", "int16", "int64", "double")


def capital(name):
    return name[0].upper() + name[1:]


def joined(type_name, rest):
    return type_name + ("" if type_name.endswith("&") else " ") + rest


def value_from(attribute, variable):
    kind = attribute["type"]
    if kind in ("int16", "int64"):
        return f"quib::Value(static_cast<qint64>({variable}))"
    if kind == "date":
        return f"{variable} ? quib::Value(*{variable}) : quib::Value()"
    return f"quib::Value({variable})"


def value_to(attribute, variable):
    kind = attribute["type"]
    return {
        "boolean": f"quib::valueOr<bool>({variable})",
        "int16": f"static_cast<qint16>(quib::valueOr<qint64>({variable}))",
        "int64": f"quib::valueOr<qint64>({variable})",
        "double": f"quib::valueOr<double>({variable})",
        "date": f"std::holds_alternative<NSDate>({variable}) ? std::optional<NSDate>(std::get<NSDate>({variable})) "
                f": std::nullopt",
        "string": f"quib::valueOr<QString>({variable})",
        "binary": f"quib::valueOr<QByteArray>({variable})",
    }[kind]


class Entity:
    def __init__(self, data, parents):
        self.name = data["name"]
        self.abstract = data.get("abstract", False)
        self.parent = data.get("parent")
        self.own_attributes = data.get("attributes", [])
        self.own_relationships = data.get("relationships", [])
        above = parents.get(self.parent)
        self.attributes = (above.attributes if above else []) + self.own_attributes
        self.relationships = (above.relationships if above else []) + self.own_relationships

    def attribute_slot(self, name):
        return [a["name"] for a in self.attributes].index(name)

    def relationship_index(self, name):
        return [r["name"] for r in self.relationships].index(name)

    @property
    def base(self):
        return self.parent or "NSManagedObject"

    def header(self):
        base_include = f"<Store/{self.parent}.h>" if self.parent else "<Store/NSManagedObject.h>"
        destinations = sorted({r["destination"] for r in self.own_relationships} | {self.name})
        out = [BANNER, "#pragma once\n", f"#include {base_include}\n", "#include <QSet>\n", "#include <optional>\n"]
        out += [f"class {name};" for name in destinations]
        out += ["class NSManagedObjectContext;\n"]
        for kind, names in (("Attributes", self.own_attributes), ("Relationships", self.own_relationships)):
            inherits = f" : {self.parent}{kind}" if self.parent else ""
            out += [f"/// Keys of {self.name}.", f"struct {self.name}{kind}{inherits}", "{"]
            out += [f'    static constexpr QLatin1StringView {n["name"]}{{"{n["name"]}"}};' for n in names]
            out += ["};\n"]
        out += [f"/// Accessors of {self.name}; its behaviour stands in the class below it.",
                f"class _{self.name} : public {self.base}", "{", "public:",
                "    [[nodiscard]] static QString entityName();",
                "    [[nodiscard]] static const NSEntityDescription *",
                "    entityInManagedObjectContext(const NSManagedObjectContext &moc);"]
        if not self.abstract:
            out += [f"    /// A new row of {self.name} in the context, with default values.",
                    f"    static quib::Ref<{self.name}> insertInManagedObjectContext(NSManagedObjectContext &moc);"]
        out += [""]
        for attribute in self.own_attributes:
            getter, parameter, _ = TYPES[attribute["type"]]
            name = attribute["name"]
            out += [f"    [[nodiscard]] {getter} {name}() const;"]
            if attribute["type"] in NUMBERS:
                out += [f"    [[nodiscard]] {getter} {name}Value() const {{ return {name}(); }}"]
            out += [f"    virtual void set{capital(name)}({joined(parameter, 'value')});"]
        for relationship in self.own_relationships:
            name, target = relationship["name"], relationship["destination"]
            if relationship["toMany"]:
                out += [f"    [[nodiscard]] QSet<quib::Ref<{target}>> {name}() const;",
                        f"    [[nodiscard]] qint64 {name}Count() const;",
                        f"    virtual void set{capital(name)}(const QSet<quib::Ref<{target}>> &objects);",
                        f"    void add{capital(name)}Object({target} *object);",
                        f"    void remove{capital(name)}Object({target} *object);"]
            else:
                out += [f"    [[nodiscard]] quib::Ref<{target}> {name}() const;",
                        f"    virtual void set{capital(name)}(const quib::Ref<{target}> &object);"]
        out += ["", "    void setValueForKey(const quib::Value &value, const QString &key) override;", "",
                "protected:", f"    _{self.name}() = default;", f"    ~_{self.name}() override = default;", "};\n"]
        return "\n".join(out)

    def source(self):
        destinations = sorted({r["destination"] for r in self.own_relationships} | {self.name})
        n = self.name
        out = [BANNER, f'#include "_{n}.h"\n', "#include <Store/NSManagedObjectContext.h>"]
        out += [f"#include <Store/{name}.h>" for name in destinations]
        out += ["", f"QString _{n}::entityName()", "{", f'    return QStringLiteral("{n}");', "}", "",
                f"const NSEntityDescription *_{n}::entityInManagedObjectContext(const NSManagedObjectContext &moc)", "{",
                "    return moc.managedObjectModel().entityNamed(entityName());", "}", ""]
        if not self.abstract:
            out += [f"quib::Ref<{n}> _{n}::insertInManagedObjectContext(NSManagedObjectContext &moc)", "{",
                    "    const auto object = moc.insertNewObjectForEntityForName(entityName());",
                    f"    return quib::Ref<{n}>(static_cast<{n} *>(object.get()));", "}", ""]
        for attribute in self.own_attributes:
            getter, parameter, reader = TYPES[attribute["type"]]
            name, slot = attribute["name"], self.attribute_slot(attribute["name"])
            out += [f"{getter} _{n}::{name}() const", "{", f"    return {reader.format(slot=slot)};", "}", "",
                    f"void _{n}::set{capital(name)}({joined(parameter, 'value')})", "{",
                    f"    setValueAtSlot({slot}, {value_from(attribute, 'value')});", "}", ""]
        for relationship in self.own_relationships:
            name, target = relationship["name"], relationship["destination"]
            index = self.relationship_index(name)
            if relationship["toMany"]:
                out += [f"QSet<quib::Ref<{target}>> _{n}::{name}() const", "{",
                        f"    QSet<quib::Ref<{target}>> objects;",
                        f"    for (const auto &object : targetsAtIndex({index})) {{",
                        f"        objects.insert(quib::Ref<{target}>(static_cast<{target} *>(object.get())));", "    }",
                        "    return objects;", "}", "",
                        f"qint64 _{n}::{name}Count() const", "{", f"    return countAtIndex({index});", "}", "",
                        f"void _{n}::set{capital(name)}(const QSet<quib::Ref<{target}>> &objects)", "{",
                        "    QList<NSManagedObject *> targets;", "    targets.reserve(objects.size());",
                        "    for (const auto &object : objects) {", "        targets.append(object.get());", "    }",
                        f"    setTargetsAtIndex({index}, targets);", "}", "",
                        f"void _{n}::add{capital(name)}Object({target} *object)", "{",
                        f"    addTargetAtIndex({index}, object);", "}", "",
                        f"void _{n}::remove{capital(name)}Object({target} *object)", "{",
                        f"    removeTargetAtIndex({index}, object);", "}", ""]
            else:
                out += [f"quib::Ref<{target}> _{n}::{name}() const", "{",
                        f"    const auto object = targetAtIndex({index});",
                        f"    return quib::Ref<{target}>(static_cast<{target} *>(object.get()));", "}", "",
                        f"void _{n}::set{capital(name)}(const quib::Ref<{target}> &object)", "{",
                        f"    setTargetAtIndex({index}, object.get());", "}", ""]
        out += [f"void _{n}::setValueForKey(const quib::Value &value, const QString &key)", "{"]
        for attribute in self.own_attributes:
            name = attribute["name"]
            out += [f"    if (key == {n}Attributes::{name}) {{",
                    f"        set{capital(name)}({value_to(attribute, 'value')});", "        return;", "    }"]
        out += [f"    {self.base}::setValueForKey(value, key);", "}", ""]
        return "\n".join(out)


def factories(entities):
    concrete = [e.name for e in entities if not e.abstract]
    header = [BANNER, "#pragma once\n", "#include <Store/NSPersistentStoreCoordinator.h>\n", "namespace quib {\n",
              "/// The class that stands for each entity.",
              "[[nodiscard]] NSManagedObjectFactories managedObjectFactories();\n", "} // namespace quib\n"]
    source = [BANNER, '#include "ManagedObjectFactories.h"\n']
    source += [f"#include <Store/{name}.h>" for name in concrete]
    source += ["", "namespace quib {\n", "NSManagedObjectFactories managedObjectFactories()", "{", "    return {"]
    source += [f'        {{QStringLiteral("{name}"), []() -> NSManagedObject * {{ return new {name}; }}}},'
               for name in concrete]
    source += ["    };", "}\n", "} // namespace quib\n"]
    return "\n".join(header), "\n".join(source)


def write(path, text):
    """Leaves a file that already has the text alone, so that nothing is built again without need."""
    try:
        with open(path, encoding="utf-8") as file:
            if file.read() == text:
                return
    except FileNotFoundError:
        pass
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)


def main():
    model_path, folder = sys.argv[1], sys.argv[2]
    with open(model_path, encoding="utf-8") as file:
        data = json.load(file)
    entities, by_name = [], {}
    for entry in data["entities"]:
        entity = Entity(entry, by_name)
        by_name[entity.name] = entity
        entities.append(entity)
    if "--list" in sys.argv[3:]:
        names = [f"_{e.name}" for e in entities] + ["ManagedObjectFactories"]
        print(";".join(os.path.join(folder, name + end) for name in names for end in (".h", ".cpp")), end="")
        return
    os.makedirs(folder, exist_ok=True)
    for entity in entities:
        write(os.path.join(folder, f"_{entity.name}.h"), entity.header())
        write(os.path.join(folder, f"_{entity.name}.cpp"), entity.source())
    header, source = factories(entities)
    write(os.path.join(folder, "ManagedObjectFactories.h"), header)
    write(os.path.join(folder, "ManagedObjectFactories.cpp"), source)


if __name__ == "__main__":
    main()
