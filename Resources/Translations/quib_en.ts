<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>QBAppDelegate</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QBMainWindowController</name>
    <message numerus="yes">
        <source>%n link(s) copied.</source>
        <translation>
            <numerusform>%n link copied.</numerusform>
            <numerusform>%n links copied.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n notes selected</source>
        <translation>
            <numerusform>%n note selected</numerusform>
            <numerusform>%n notes selected</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The tag #%1 was taken out of %n note(s).</source>
        <translation>
            <numerusform>The tag #%1 was taken out of %n note.</numerusform>
            <numerusform>The tag #%1 was taken out of %n notes.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n found</source>
        <translation>
            <numerusform>%n found</numerusform>
            <numerusform>%n found</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Delete %n Notes</source>
        <translation>
            <numerusform>Delete %n Note</numerusform>
            <numerusform>Delete %n Notes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::EditorPage</name>
    <message numerus="yes">
        <source>%n languages</source>
        <translation>
            <numerusform>%n language</numerusform>
            <numerusform>%n languages</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::FindBar</name>
    <message numerus="yes">
        <source>%n replaced</source>
        <translation>
            <numerusform>%n replaced</numerusform>
            <numerusform>%n replaced</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::NoteListView</name>
    <message numerus="yes">
        <source>%n notes</source>
        <translation>
            <numerusform>%n note</numerusform>
            <numerusform>%n notes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::SidebarModel</name>
    <message numerus="yes">
        <source>%1, %n note(s)</source>
        <translation>
            <numerusform>%1, %n note</numerusform>
            <numerusform>%1, %n notes</numerusform>
        </translation>
    </message>
</context>
</TS>
