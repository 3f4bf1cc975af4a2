<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>BlockMove</name>
    <message numerus="yes">
        <source>%n element(s), &quot;%1&quot; to %2</source>
        <translation>
            <numerusform>%n element, &quot;%1&quot; to %2</numerusform>
            <numerusform>%n elements, &quot;%1&quot; to %2</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1: shares %n channel(s) with other elements</source>
        <translation>
            <numerusform>%1: shares %n channel with another element</numerusform>
            <numerusform>%1: shares %n channels with other elements</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ChannelTrace</name>
    <message numerus="yes">
        <source>to the %n node(s) that announced it</source>
        <translation>
            <numerusform>to the %n node that announced it</numerusform>
            <numerusform>to the %n nodes that announced it</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FixtureImporting</name>
    <message numerus="yes">
        <source>%n fixture(s) to replace are used in your current mapping file.

Replacing them changes what the placed fixtures send, at once. Replace them?</source>
        <translation>
            <numerusform>%n fixture to replace is used in your current mapping file.

Replacing it changes what the placed fixtures send, at once. Replace it?</numerusform>
            <numerusform>%n fixtures to replace are used in your current mapping file.

Replacing them changes what the placed fixtures send, at once. Replace them?</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n fixture(s) were not imported: other fixtures of their names came into the library meanwhile. Import them again to choose what becomes of them.</source>
        <translation>
            <numerusform>%n fixture was not imported: another fixture of its name came into the library meanwhile. Import it again to choose what becomes of it.</numerusform>
            <numerusform>%n fixtures were not imported: other fixtures of their names came into the library meanwhile. Import them again to choose what becomes of them.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ImportDetails</name>
    <message numerus="yes">
        <source>%1, %2, %n channel(s)</source>
        <translation>
            <numerusform>%1, %2, %n channel</numerusform>
            <numerusform>%1, %2, %n channels</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>PatchSheet</name>
    <message numerus="yes">
        <source>Free: %1 (%n channel(s))</source>
        <translation>
            <numerusform>Free: %1 (%n channel)</numerusform>
            <numerusform>Free: %1 (%n channels)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message numerus="yes">
        <source>%n element(s)</source>
        <translation>
            <numerusform>%n element</numerusform>
            <numerusform>%n elements</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n universe(s)</source>
        <translation>
            <numerusform>%n universe</numerusform>
            <numerusform>%n universes</numerusform>
        </translation>
    </message>
</context>
</TS>
