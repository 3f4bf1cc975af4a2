<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>ArtNetNodeModel</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>IP</source>
        <translation>IP</translation>
    </message>
    <message>
        <source>Nb</source>
        <translation>Anz.</translation>
    </message>
    <message>
        <source>Sub</source>
        <translation>Sub</translation>
    </message>
    <message>
        <source>Univ</source>
        <translation>Univ</translation>
    </message>
    <message>
        <source>Port %1</source>
        <translation>Port %1</translation>
    </message>
    <message>
        <source>Entered by hand: it need not answer.</source>
        <translation>Von Hand eingetragen: Er muss nicht antworten.</translation>
    </message>
    <message>
        <source>Fixtures are sent to this universe of %1, which has no port for it. Choose one of its ports, or set the node.</source>
        <translation>In dieses Universum von %1 werden Gerätedaten gesendet, aber er hat keinen Port dafür. Wählen Sie einen seiner Ports, oder stellen Sie den Node um.</translation>
    </message>
    <message>
        <source>%1 has answered and does so no longer. No fixture is sent to it.</source>
        <translation>%1 hat geantwortet und tut es nicht mehr. Er erhält keine Daten mehr.</translation>
    </message>
    <message>
        <source>Fixtures are sent to %1, which does not answer. Check its power, its cable and its address, or choose another node.</source>
        <translation>An %1 werden Gerätedaten gesendet, aber er antwortet nicht. Prüfen Sie Strom, Kabel und Adresse, oder wählen Sie einen anderen Node.</translation>
    </message>
    <message>
        <source>A program like this one, or the media program: it is not offered as a node.</source>
        <translation>Ein Programm wie dieses oder das Medienprogramm: Es wird nicht als Node angeboten.</translation>
    </message>
</context>
<context>
    <name>ArtNetPatchPage</name>
    <message>
        <source>D&amp;MX:</source>
        <translation>D&amp;MX:</translation>
    </message>
    <message>
        <source>First DMX channel</source>
        <translation>Erster DMX-Kanal</translation>
    </message>
    <message>
        <source>&amp;Universe:</source>
        <translation>&amp;Universum:</translation>
    </message>
    <message>
        <source>Universe</source>
        <translation>Universum</translation>
    </message>
    <message>
        <source>&amp;Sub-Net:</source>
        <translation>&amp;Subnet:</translation>
    </message>
    <message>
        <source>Sub-net</source>
        <translation>Subnet</translation>
    </message>
    <message>
        <source>&amp;IP Address:</source>
        <translation>&amp;IP-Adresse:</translation>
    </message>
    <message>
        <source>IP address of the node</source>
        <translation>IP-Adresse des Nodes</translation>
    </message>
    <message>
        <source>Universe is used by devices in unicast and broadcast mode</source>
        <translation>Das Universum wird von Geräten im Unicast und im Broadcast benutzt</translation>
    </message>
    <message>
        <source>%1 is not in the chosen network: nothing is sent to it</source>
        <translation>%1 liegt nicht im gewählten Netzwerk: An ihn wird nichts gesendet</translation>
    </message>
</context>
<context>
    <name>BlockMove</name>
    <message>
        <source>Universe %1 can&apos;t be patched: elements go to 0/0 to 15/15</source>
        <translation>Universum %1 kann nicht gepatcht werden: Elemente liegen auf 0/0 bis 15/15</translation>
    </message>
    <message>
        <source>Universe %1 is received: drop on the universe that it is sent on as</source>
        <translation>Universum %1 wird empfangen: Legen Sie auf dem Universum ab, auf dem es weitergesendet wird</translation>
    </message>
    <message>
        <source>&quot;%1&quot; to %2</source>
        <translation>„%1“ auf %2</translation>
    </message>
    <message numerus="yes">
        <source>%n element(s), &quot;%1&quot; to %2</source>
        <translation>
            <numerusform>%n Element, „%1“ auf %2</numerusform>
            <numerusform>%n Elemente, „%1“ auf %2</numerusform>
        </translation>
    </message>
    <message>
        <source>%1: reaches beyond channels 1 to 512, and is not moved</source>
        <translation>%1: reicht über die Kanäle 1 bis 512 hinaus und wird nicht verschoben</translation>
    </message>
    <message numerus="yes">
        <source>%1: shares %n channel(s) with other elements</source>
        <translation>
            <numerusform>%1: teilt %n Kanal mit anderen Elementen</numerusform>
            <numerusform>%1: teilt %n Kanäle mit anderen Elementen</numerusform>
        </translation>
    </message>
    <message>
        <source>%1: free</source>
        <translation>%1: frei</translation>
    </message>
</context>
<context>
    <name>CellLegend</name>
    <message>
        <source>the first channel of an element</source>
        <translation>der erste Kanal eines Elements</translation>
    </message>
    <message>
        <source>of the same element</source>
        <translation>von demselben Element</translation>
    </message>
    <message>
        <source>two elements write it</source>
        <translation>zwei Elemente schreiben ihn</translation>
    </message>
    <message>
        <source>its pixel goes on beyond channel 512</source>
        <translation>sein Pixel reicht über Kanal 512 hinaus</translation>
    </message>
    <message>
        <source>received, of the merged desk</source>
        <translation>empfangen, vom Pult am Merger</translation>
    </message>
    <message>
        <source>free</source>
        <translation>frei</translation>
    </message>
    <message>
        <source>the element is selected</source>
        <translation>das Element ist ausgewählt</translation>
    </message>
    <message>
        <source>Legend</source>
        <translation>Legende</translation>
    </message>
    <message>
        <source>What the marks of the cells mean</source>
        <translation>Was die Zeichen in den Feldern bedeuten</translation>
    </message>
</context>
<context>
    <name>CellTexts</name>
    <message>
        <source>row %1, column %2</source>
        <translation>Zeile %1, Spalte %2</translation>
    </message>
    <message>
        <source>channel %1</source>
        <translation>Kanal %1</translation>
    </message>
    <message>
        <source>channels %1 to %2</source>
        <translation>Kanäle %1 bis %2</translation>
    </message>
    <message>
        <source>, </source>
        <translation>, </translation>
    </message>
    <message>
        <source>overlaps another pixel</source>
        <translation>überlappt ein anderes Pixel</translation>
    </message>
    <message>
        <source>before the first channel</source>
        <translation>vor dem ersten Kanal</translation>
    </message>
    <message>
        <source>past the last channel</source>
        <translation>hinter dem letzten Kanal</translation>
    </message>
    <message>
        <source>empty</source>
        <translation>leer</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>ChannelTable</name>
    <message>
        <source>Channels and their values</source>
        <translation>Kanäle und ihre Werte</translation>
    </message>
    <message>
        <source>Channel</source>
        <translation>Kanal</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Undefined*</source>
        <translation>Undefiniert*</translation>
    </message>
</context>
<context>
    <name>ChannelTrace</name>
    <message>
        <source>outside of the picture</source>
        <translation>außerhalb des Bildes</translation>
    </message>
    <message>
        <source>picture (%1, %2) %3</source>
        <translation>Bild (%1, %2) %3</translation>
    </message>
    <message>
        <source>shown as %1</source>
        <translation>gezeigt als %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; pixel %2 %3</source>
        <translation>„%1“ Pixel %2 %3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; pixel %2</source>
        <translation>„%1“ Pixel %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; channel %2, constant</source>
        <translation>„%1“ Kanal %2, Konstante</translation>
    </message>
    <message>
        <source>&quot;%1&quot; channel %2, free</source>
        <translation>„%1“ Kanal %2, frei</translation>
    </message>
    <message>
        <source>&quot;%1&quot; channel %2, unused</source>
        <translation>„%1“ Kanal %2, unbenutzt</translation>
    </message>
    <message>
        <source>no fixture here</source>
        <translation>hier liegt kein Gerät</translation>
    </message>
    <message>
        <source>received from %1</source>
        <translation>empfangen von %1</translation>
    </message>
    <message>
        <source>value %1</source>
        <translation>Wert %1</translation>
    </message>
    <message>
        <source>another fixture is patched here, too</source>
        <translation>hier ist auch ein anderes Gerät gepatcht</translation>
    </message>
    <message>
        <source>overwritten by &quot;%1&quot;</source>
        <translation>überschrieben von „%1“</translation>
    </message>
    <message>
        <source>universe %1 channel %2</source>
        <translation>Universum %1 Kanal %2</translation>
    </message>
    <message>
        <source>universe %1 channels %2 to %3</source>
        <translation>Universum %1 Kanäle %2 bis %3</translation>
    </message>
    <message>
        <source>the rest lies beyond channel 512 and is not sent</source>
        <translation>der Rest liegt hinter Kanal 512 und wird nicht gesendet</translation>
    </message>
    <message>
        <source>merged from %1</source>
        <translation>zusammengeführt aus %1</translation>
    </message>
    <message>
        <source>to all nodes</source>
        <translation>an alle Nodes</translation>
    </message>
    <message numerus="yes">
        <source>to the %n node(s) that announced it</source>
        <translation>
            <numerusform>an den %n Node, der es angekündigt hat</numerusform>
            <numerusform>an die %n Nodes, die es angekündigt haben</numerusform>
        </translation>
    </message>
    <message>
        <source>not sent: the media program sends</source>
        <translation>nicht gesendet: Das Medienprogramm sendet</translation>
    </message>
    <message>
        <source>not sent: no node announced the universe</source>
        <translation>nicht gesendet: Kein Node hat das Universum angekündigt</translation>
    </message>
    <message>
        <source>not sent: %1 is not in the network</source>
        <translation>nicht gesendet: %1 liegt nicht im Netzwerk</translation>
    </message>
    <message>
        <source>to node %1</source>
        <translation>an Node %1</translation>
    </message>
    <message>
        <source>to node &quot;%1&quot; %2</source>
        <translation>an Node „%1“ %2</translation>
    </message>
    <message>
        <source>not sent: a universe has the channels 1 to 512</source>
        <translation>nicht gesendet: Ein Universum hat die Kanäle 1 bis 512</translation>
    </message>
    <message>
        <source>not in the last frame</source>
        <translation>nicht im letzten Frame</translation>
    </message>
    <message>
        <source>sent %1 ms ago</source>
        <translation>vor %1 ms gesendet</translation>
    </message>
    <message>
        <source>not sent: the Art-Net port is not ours yet</source>
        <translation>nicht gesendet: Der Art-Net-Port gehört uns noch nicht</translation>
    </message>
    <message>
        <source>not sent: no network is chosen, or it is not connected</source>
        <translation>nicht gesendet: Kein Netzwerk ist gewählt, oder es ist nicht verbunden</translation>
    </message>
</context>
<context>
    <name>ChannelValueDelegate</name>
    <message>
        <source>Undefined*</source>
        <translation>Undefiniert*</translation>
    </message>
    <message>
        <source>Value of channel %1</source>
        <translation>Wert von Kanal %1</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>There is a pixel mapped on this channel. Do you want to proceed and override?</source>
        <translation>Auf diesem Kanal liegt ein Pixel. Möchten Sie fortfahren und es überschreiben?</translation>
    </message>
</context>
<context>
    <name>DeviceModel</name>
    <message>
        <source>Fixture</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Product Name</source>
        <translation>Produktname</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Ch.</source>
        <translation>Kan.</translation>
    </message>
    <message>
        <source>DMX channels</source>
        <translation>DMX-Kanäle</translation>
    </message>
</context>
<context>
    <name>DisplayControls</name>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>100% fits the whole canvas into the window.
Type a number from 1% to 10000% and press Enter.</source>
        <translation>100% passt die ganze Zeichenfläche in das Fenster ein.
Geben Sie eine Zahl von 1% bis 10000% ein, und drücken Sie die Eingabetaste.</translation>
    </message>
</context>
<context>
    <name>DocumentLife</name>
    <message>
        <source>Mapping Read in Part</source>
        <translation>Mapping teilweise gelesen</translation>
    </message>
    <message>
        <source>The mapping %1 can&apos;t be read whole.

%2

The rest is open. When you save it, the file as it is now is kept beside it.</source>
        <translation>Das Mapping %1 kann nicht ganz gelesen werden.

%2

Der Rest ist geöffnet. Wenn Sie ihn speichern, bleibt die Datei in ihrem jetzigen Zustand daneben erhalten.</translation>
    </message>
    <message>
        <source>Mapping Not Read</source>
        <translation>Mapping nicht gelesen</translation>
    </message>
    <message>
        <source>The mapping %1 can&apos;t be read.

%2

%3</source>
        <translation>Das Mapping %1 kann nicht gelesen werden.

%2

%3</translation>
    </message>
    <message>
        <source>It stays there. When you save, it is kept beside your mapping.</source>
        <translation>Es bleibt dort. Wenn Sie speichern, bleibt es neben Ihrem Mapping erhalten.</translation>
    </message>
    <message>
        <source>It is kept as %1.</source>
        <translation>Es wurde als %1 aufbewahrt.</translation>
    </message>
    <message>
        <source>Unsaved Work Found</source>
        <translation>Nicht gespeicherte Arbeit gefunden</translation>
    </message>
    <message>
        <source>PixelWeft ended before your last changes were saved. They were kept on %1.

Do you want to go on with them?</source>
        <translation>PixelWeft endete, bevor Ihre letzten Änderungen gespeichert waren. Sie wurden am %1 gesichert.

Möchten Sie damit weiterarbeiten?</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Unsaved Work Not Restored</source>
        <translation>Nicht gespeicherte Arbeit nicht wiederhergestellt</translation>
    </message>
    <message>
        <source>%1

Your unsaved work is kept as %2.</source>
        <translation>%1

Ihre nicht gespeicherte Arbeit wurde als %2 aufbewahrt.</translation>
    </message>
    <message>
        <source>Your mapping is as you saved it last.</source>
        <translation>Ihr Mapping ist so, wie Sie es zuletzt gespeichert haben.</translation>
    </message>
    <message>
        <source>Mapping Not Imported</source>
        <translation>Mapping nicht importiert</translation>
    </message>
    <message>
        <source>%1 can&apos;t be imported.

%2

Your mapping is as it was.</source>
        <translation>%1 kann nicht importiert werden.

%2

Ihr Mapping ist unverändert.</translation>
    </message>
    <message>
        <source>%1 can&apos;t be read whole.

%2</source>
        <translation>%1 kann nicht ganz gelesen werden.

%2</translation>
    </message>
    <message>
        <source>Import the rest</source>
        <translation>Rest importieren</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Unsaved Mapping</source>
        <translation>Nicht gespeichertes Mapping</translation>
    </message>
    <message>
        <source>Your current mapping has unsaved changes.

Are you sure you want to import the mapping and lose your changes?</source>
        <translation>Ihr Mapping hat nicht gespeicherte Änderungen.

Möchten Sie das andere wirklich importieren und Ihre Änderungen verlieren?</translation>
    </message>
    <message>
        <source>Mapping Not Saved</source>
        <translation>Mapping nicht gespeichert</translation>
    </message>
    <message>
        <source>The mapping could not be saved to %1.

%2

Your work is still open, and a file that was there is as it was. Export the mapping to another place to be safe.</source>
        <translation>Das Mapping konnte nicht in %1 gespeichert werden.

%2

Ihre Arbeit ist noch geöffnet, und eine schon vorhandene Datei ist unverändert. Exportieren Sie das Mapping zur Sicherheit an einen anderen Ort.</translation>
    </message>
    <message>
        <source>Unsaved Changes Not Kept</source>
        <translation>Nicht gespeicherte Änderungen nicht gesichert</translation>
    </message>
    <message>
        <source>No copy of your unsaved changes can be kept beside %1.

%2

If PixelWeft or the computer stops now, your changes are lost. Save the mapping, or export it to another place.</source>
        <translation>Neben %1 kann keine Kopie Ihrer nicht gespeicherten Änderungen gesichert werden.

%2

Wenn PixelWeft oder der Rechner jetzt ausfällt, sind Ihre Änderungen verloren. Speichern Sie das Mapping, oder exportieren Sie es an einen anderen Ort.</translation>
    </message>
    <message>
        <source>New Mapping</source>
        <translation>Neues Mapping</translation>
    </message>
    <message>
        <source>Your current mapping has unsaved changes.

Are you sure you want to start a new mapping and lose your changes?</source>
        <translation>Ihr Mapping hat nicht gespeicherte Änderungen.

Möchten Sie wirklich ein neues beginnen und Ihre Änderungen verlieren?</translation>
    </message>
    <message>
        <source>Import Mapping</source>
        <translation>Mapping importieren</translation>
    </message>
    <message>
        <source>Mapping files (*.wfm)</source>
        <translation>Mapping-Dateien (*.wfm)</translation>
    </message>
    <message>
        <source>Export Mapping</source>
        <translation>Mapping exportieren</translation>
    </message>
    <message>
        <source>Export Mapping Forbidden</source>
        <translation>Export des Mappings nicht erlaubt</translation>
    </message>
    <message>
        <source>Exporting to the mapping.wfm file is forbidden. Use Save feature instead to update this file.</source>
        <translation>In die Datei mapping.wfm kann nicht exportiert werden. Verwenden Sie „Speichern“, um diese Datei zu aktualisieren.</translation>
    </message>
    <message>
        <source>Mapping Not Exported</source>
        <translation>Mapping nicht exportiert</translation>
    </message>
    <message>
        <source>The mapping could not be written to %1.

%2</source>
        <translation>Das Mapping konnte nicht in %1 geschrieben werden.

%2</translation>
    </message>
    <message>
        <source>The current mapping has changes that you have not saved yet.

Are you sure you want to exit the Zentri PixelWeft?</source>
        <translation>Das Mapping hat Änderungen, die Sie noch nicht gespeichert haben.

Möchten Sie Zentri PixelWeft wirklich beenden?</translation>
    </message>
    <message>
        <source>Do you want to import %1 in place of your current mapping?

It is sent at once.</source>
        <translation>Möchten Sie %1 anstelle Ihres jetzigen Mappings importieren?

Es wird sofort gesendet.</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
</context>
<context>
    <name>FixedDialog</name>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>FixtureConflictBox</name>
    <message>
        <source>Fixture conflict</source>
        <translation>Gerätekonflikt</translation>
    </message>
    <message>
        <source>The fixture &quot;%1 %2&quot; stored in the mapping file is different to the one in your library.

Do you want to overwrite the library fixture ?</source>
        <translation>Das Gerät „%1 %2“ in der Mapping-Datei unterscheidet sich von dem in Ihrer Bibliothek.

Möchten Sie das Gerät der Bibliothek überschreiben?</translation>
    </message>
    <message>
        <source>Yes, use the fixture from the mapping file</source>
        <translation>Ja, das Gerät aus der Mapping-Datei verwenden</translation>
    </message>
    <message>
        <source>No, use the original fixture from the library</source>
        <translation>Nein, das Gerät der Bibliothek behalten</translation>
    </message>
    <message>
        <source>Conflict occured while updating your library.

Do you want to overwrite the local library fixture ?</source>
        <translation>Beim Aktualisieren Ihrer Bibliothek gibt es einen Konflikt.

Möchten Sie das Gerät in Ihrer Bibliothek überschreiben?</translation>
    </message>
    <message>
        <source>Overwrite</source>
        <translation>Überschreiben</translation>
    </message>
    <message>
        <source>Skip</source>
        <translation>Überspringen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>FixtureEditing</name>
    <message>
        <source>Enter the name of the manufacturer.</source>
        <translation>Geben Sie den Namen des Herstellers ein.</translation>
    </message>
    <message>
        <source>Enter the name of the product.</source>
        <translation>Geben Sie den Namen des Produkts ein.</translation>
    </message>
    <message>
        <source>There is a product of this name already, from &quot;%1&quot;.

Mappings know a fixture by the name of its product, so the library holds each name once.</source>
        <translation>Es gibt schon ein Produkt mit diesem Namen, von „%1“.

Mappings kennen ein Gerät am Namen seines Produkts; darum hat die Bibliothek jeden Namen nur einmal.</translation>
    </message>
    <message>
        <source>Edit Used Fixture</source>
        <translation>Benutztes Gerät bearbeiten</translation>
    </message>
    <message>
        <source>This fixture is used in your current mapping file.

Editing the fixture will affect your current document.</source>
        <translation>Dieses Gerät wird in Ihrem Mapping benutzt.

Wenn Sie es bearbeiten, ändert sich Ihr Dokument.</translation>
    </message>
</context>
<context>
    <name>FixtureExport</name>
    <message>
        <source>Export Fixtures: %1 of %2</source>
        <translation>Geräte exportieren: %1 von %2</translation>
    </message>
    <message>
        <source>Fixtures Not Exported</source>
        <translation>Geräte nicht exportiert</translation>
    </message>
    <message>
        <source>The fixtures could not be written to %1.

%2

A file that was there is as it was.</source>
        <translation>Die Geräte konnten nicht in %1 geschrieben werden.

%2

Eine schon vorhandene Datei ist unverändert.</translation>
    </message>
    <message>
        <source>Fixture Library File (*.wfl)</source>
        <translation>Gerätebibliothek (*.wfl)</translation>
    </message>
    <message>
        <source>%1 is there already. Do you want to replace it?</source>
        <translation>%1 ist schon vorhanden. Möchten Sie die Datei ersetzen?</translation>
    </message>
    <message>
        <source>Export Fixtures Forbidden</source>
        <translation>Export der Geräte nicht erlaubt</translation>
    </message>
    <message>
        <source>This file is the library that PixelWeft works with. It is written with every change. Please choose another name.</source>
        <translation>Diese Datei ist die Bibliothek, mit der PixelWeft arbeitet. Sie wird mit jeder Änderung geschrieben. Bitte wählen Sie einen anderen Namen.</translation>
    </message>
</context>
<context>
    <name>FixtureForm</name>
    <message>
        <source>&amp;Settings</source>
        <translation>&amp;Einstellungen</translation>
    </message>
    <message>
        <source>P&amp;ersonality</source>
        <translation>&amp;Belegung</translation>
    </message>
    <message>
        <source>Product Information</source>
        <translation>Angaben zum Produkt</translation>
    </message>
    <message>
        <source>&amp;Product Name:</source>
        <translation>&amp;Produktname:</translation>
    </message>
    <message>
        <source>&amp;Manufacturer:</source>
        <translation>&amp;Hersteller:</translation>
    </message>
    <message>
        <source>Pixel Mapping</source>
        <translation>Pixel-Mapping</translation>
    </message>
    <message>
        <source>&amp;Next Channel:</source>
        <translation>&amp;Nächster Kanal:</translation>
    </message>
    <message>
        <source>Fixture Settings</source>
        <translation>Geräteeinstellungen</translation>
    </message>
    <message>
        <source>Type:</source>
        <translation>Typ:</translation>
    </message>
    <message>
        <source>Width:</source>
        <translation>Breite:</translation>
    </message>
    <message>
        <source>Height:</source>
        <translation>Höhe:</translation>
    </message>
    <message>
        <source>Channels:</source>
        <translation>Kanäle:</translation>
    </message>
    <message>
        <source>Mo&amp;dify...</source>
        <translation>Än&amp;dern...</translation>
    </message>
    <message>
        <source>Auto-Mapping</source>
        <translation>Auto-Mapping</translation>
    </message>
    <message>
        <source>Start &amp;Corner</source>
        <translation>&amp;Startecke</translation>
    </message>
    <message>
        <source>O&amp;rientation</source>
        <translation>Aus&amp;richtung</translation>
    </message>
    <message>
        <source>Horizontal</source>
        <translation>Horizontal</translation>
    </message>
    <message>
        <source>Vertical</source>
        <translation>Vertikal</translation>
    </message>
    <message>
        <source>Sna&amp;ke</source>
        <translation>Schlan&amp;genlinie</translation>
    </message>
    <message>
        <source>S&amp;tart Channel</source>
        <translation>Star&amp;tkanal</translation>
    </message>
    <message>
        <source>&amp;Auto-Map</source>
        <translation>&amp;Auto-Map</translation>
    </message>
    <message>
        <source>Start at the top left</source>
        <translation>Oben links beginnen</translation>
    </message>
    <message>
        <source>Start at the top right</source>
        <translation>Oben rechts beginnen</translation>
    </message>
    <message>
        <source>Start at the bottom left</source>
        <translation>Unten links beginnen</translation>
    </message>
    <message>
        <source>Start at the bottom right</source>
        <translation>Unten rechts beginnen</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Reset Mapp&amp;ing</source>
        <translation>&amp;Mapping zurücksetzen</translation>
    </message>
    <message>
        <source>Reset C&amp;onstants</source>
        <translation>&amp;Konstanten zurücksetzen</translation>
    </message>
    <message>
        <source>* Undefined channels will output value zero except in the case of a merge where the value received through DMX input is used.</source>
        <translation>* Undefinierte Kanäle geben den Wert 0 aus. Beim Zusammenführen wird stattdessen der Wert gesendet, der am DMX-Eingang ankommt.</translation>
    </message>
</context>
<context>
    <name>FixtureImport</name>
    <message>
        <source>There is no such file.</source>
        <translation>Es gibt keine solche Datei.</translation>
    </message>
    <message>
        <source>You are not permitted to read it.</source>
        <translation>Sie haben keine Berechtigung, sie zu lesen.</translation>
    </message>
    <message>
        <source>The disk can&apos;t read it.</source>
        <translation>Der Datenträger kann sie nicht lesen.</translation>
    </message>
    <message>
        <source>It is larger than any fixture definition.</source>
        <translation>Sie ist größer als jede Gerätedefinition.</translation>
    </message>
    <message>
        <source>The file is cut off or damaged: %1.</source>
        <translation>Die Datei ist abgeschnitten oder beschädigt: %1.</translation>
    </message>
    <message>
        <source>It is no fixture definition that PixelWeft knows.</source>
        <translation>Es ist keine Gerätedefinition, die PixelWeft kennt.</translation>
    </message>
    <message>
        <source>It has no fixtures.</source>
        <translation>Sie enthält keine Geräte.</translation>
    </message>
    <message>
        <source>The fixture breaks the rules of a library.</source>
        <translation>Das Gerät verletzt die Regeln einer Bibliothek.</translation>
    </message>
    <message>
        <source>The file only points to the fixture %1, which isn&apos;t there.</source>
        <translation>Die Datei verweist nur auf das Gerät %1, das nicht vorhanden ist.</translation>
    </message>
    <message>
        <source>The file only points to the fixture %1, which points back to it.</source>
        <translation>Die Datei verweist nur auf das Gerät %1, das auf sie zurückverweist.</translation>
    </message>
    <message>
        <source>The file only points to the fixture %1, by way of too many others.</source>
        <translation>Die Datei verweist nur auf das Gerät %1, und das über zu viele andere.</translation>
    </message>
    <message>
        <source>The definition has more modes than any fixture.</source>
        <translation>Die Definition hat mehr Modi als jedes Gerät.</translation>
    </message>
    <message>
        <source>It has %1 channels. A fixture has 512 at most.</source>
        <translation>Sie hat %1 Kanäle. Ein Gerät hat höchstens 512.</translation>
    </message>
    <message>
        <source>It has no channels.</source>
        <translation>Sie hat keine Kanäle.</translation>
    </message>
    <message>
        <source>The definition doesn&apos;t say what the channel &quot;%1&quot; does.</source>
        <translation>Die Definition sagt nicht, was der Kanal „%1“ tut.</translation>
    </message>
    <message>
        <source>The definition doesn&apos;t say where the pixel &quot;%1&quot; is.</source>
        <translation>Die Definition sagt nicht, wo das Pixel „%1“ liegt.</translation>
    </message>
    <message>
        <source>The definition has more pixels than any fixture.</source>
        <translation>Die Definition hat mehr Pixel als jedes Gerät.</translation>
    </message>
    <message>
        <source>It has no channels for colours or brightness.</source>
        <translation>Sie hat keine Kanäle für Farben oder Helligkeit.</translation>
    </message>
    <message>
        <source>It makes smoke or wind and has no colours.</source>
        <translation>Das Gerät macht Nebel oder Wind und hat keine Farben.</translation>
    </message>
    <message>
        <source>No pixel type has these colours in this order: %1.</source>
        <translation>Kein Pixeltyp hat diese Farben in dieser Reihenfolge: %1.</translation>
    </message>
    <message>
        <source>The colours of a pixel lie apart: %1.</source>
        <translation>Die Farben eines Pixels liegen auseinander: %1.</translation>
    </message>
    <message>
        <source>No pixel type has 16-bit colours in this order: %1.</source>
        <translation>Kein Pixeltyp hat 16-Bit-Farben in dieser Reihenfolge: %1.</translation>
    </message>
    <message>
        <source>The pixels have no common order: %1.</source>
        <translation>Die Pixel haben keine gemeinsame Reihenfolge: %1.</translation>
    </message>
    <message>
        <source>The colour channel &quot;%1&quot; does more than its colour.</source>
        <translation>Der Farbkanal „%1“ steuert mehr als seine Farbe.</translation>
    </message>
    <message>
        <source>It has no colours, and its dimmer &quot;%1&quot; does more than dim.</source>
        <translation>Das Gerät hat keine Farben, und sein Dimmer „%1“ steuert mehr als die Helligkeit.</translation>
    </message>
    <message>
        <source>second byte of a pixel&apos;s colour</source>
        <translation>zweites Byte einer Pixelfarbe</translation>
    </message>
    <message>
        <source>colour outside of the pixels, off</source>
        <translation>Farbe außerhalb der Pixel, aus</translation>
    </message>
    <message>
        <source>lamp outside of the pixels, off</source>
        <translation>Lampe außerhalb der Pixel, aus</translation>
    </message>
    <message>
        <source>open</source>
        <translation>offen</translation>
    </message>
    <message>
        <source>full</source>
        <translation>voll</translation>
    </message>
    <message>
        <source>no function</source>
        <translation>ohne Funktion</translation>
    </message>
    <message>
        <source>open place of the wheel</source>
        <translation>offene Position</translation>
    </message>
    <message>
        <source>middle</source>
        <translation>Mitte</translation>
    </message>
    <message>
        <source>at its least</source>
        <translation>auf dem kleinsten Wert</translation>
    </message>
    <message>
        <source>the definition&apos;s default, as it names no still value</source>
        <translation>Vorgabe der Definition, da sie keinen Ruhewert nennt</translation>
    </message>
    <message>
        <source>first value, as the definition names no still one</source>
        <translation>erster Wert, da die Definition keinen Ruhewert nennt</translation>
    </message>
    <message>
        <source>second byte of the channel</source>
        <translation>zweites Byte des Kanals</translation>
    </message>
    <message>
        <source>not used by the mode</source>
        <translation>vom Modus nicht benutzt</translation>
    </message>
    <message>
        <source>free for a desk</source>
        <translation>frei für ein Pult</translation>
    </message>
    <message>
        <source>component %1 of pixel %2</source>
        <translation>Komponente %1 von Pixel %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>FixtureImporting</name>
    <message>
        <source>Replace Used Fixtures</source>
        <translation>Benutzte Geräte ersetzen</translation>
    </message>
    <message numerus="yes">
        <source>%n fixture(s) to replace are used in your current mapping file.

Replacing them changes what the placed fixtures send, at once. Replace them?</source>
        <translation>
            <numerusform>%n Gerät, das ersetzt würde, wird in Ihrem Mapping benutzt.

Damit ändert sich sofort, was die platzierten Geräte senden. Ersetzen?</numerusform>
            <numerusform>%n Geräte, die ersetzt würden, werden in Ihrem Mapping benutzt.

Damit ändert sich sofort, was die platzierten Geräte senden. Ersetzen?</numerusform>
        </translation>
    </message>
    <message>
        <source>Import Fixtures</source>
        <translation>Geräte importieren</translation>
    </message>
    <message numerus="yes">
        <source>%n fixture(s) were not imported: other fixtures of their names came into the library meanwhile. Import them again to choose what becomes of them.</source>
        <translation>
            <numerusform>%n Gerät wurde nicht importiert: Inzwischen kam ein anderes mit seinem Namen in die Bibliothek. Importieren Sie es noch einmal, um zu wählen, was aus ihm wird.</numerusform>
            <numerusform>%n Geräte wurden nicht importiert: Inzwischen kamen andere mit ihren Namen in die Bibliothek. Importieren Sie sie noch einmal, um zu wählen, was aus ihnen wird.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>IPCtrl</name>
    <message>
        <source>Part %1 of the address</source>
        <translation>Teil %1 der Adresse</translation>
    </message>
</context>
<context>
    <name>Identify</name>
    <message>
        <source>Nothing to identify</source>
        <translation>Nichts zu identifizieren</translation>
    </message>
    <message>
        <source>Left out, having no address: %1</source>
        <translation>Ausgelassen, da ohne Adresse: %1</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Universe %1, channels %2 to %3</source>
        <translation>Universum %1, Kanäle %2 bis %3</translation>
    </message>
    <message>
        <source>Node: %1</source>
        <translation>Node: %1</translation>
    </message>
    <message>
        <source>The media program sends at the moment, so nothing is lit. Choose PixelWeft as the sender.</source>
        <translation>Zurzeit sendet das Medienprogramm, darum leuchtet nichts. Wählen Sie PixelWeft als Sender.</translation>
    </message>
    <message>
        <source>The fixture has no pixels that could be lit.</source>
        <translation>Das Gerät hat keine Pixel, die leuchten könnten.</translation>
    </message>
    <message>
        <source>Channels that are left to a desk are sent as 0, so a dimmer among them keeps the fixture dark. Merge the desk&apos;s DMX, or give them a value in the fixture.</source>
        <translation>Kanäle, die einem Pult überlassen sind, werden als 0 gesendet; ein Dimmer unter ihnen hält das Gerät dunkel. Führen Sie das DMX des Pults zusammen, oder geben Sie ihnen im Gerät einen Wert.</translation>
    </message>
    <message>
        <source>No network is chosen, or it is not connected, so nothing is lit.</source>
        <translation>Kein Netzwerk ist gewählt, oder es ist nicht verbunden, darum leuchtet nichts.</translation>
    </message>
</context>
<context>
    <name>IdentifyPanel</name>
    <message>
        <source>White</source>
        <translation>Weiß</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>Identify</source>
        <translation>Identifizieren</translation>
    </message>
    <message>
        <source>First pixel &amp;blinks red, last pixel blue</source>
        <translation>Erstes &amp;Pixel blinkt rot, letztes blau</translation>
    </message>
    <message>
        <source>Others dar&amp;k</source>
        <translation>&amp;Übrige dunkel</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>&amp;Previous</source>
        <translation>Zurüc&amp;k</translation>
    </message>
    <message>
        <source>Left or Up; with Shift by ten; Home for the first one</source>
        <translation>Pfeil links oder Pfeil auf; mit Umschalt um zehn; Pos1 für das erste</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Weiter</translation>
    </message>
    <message>
        <source>Right or Down; with Shift by ten; End for the last one</source>
        <translation>Pfeil rechts oder Pfeil ab; mit Umschalt um zehn; Ende für das letzte</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>%1: %2, %3</source>
        <translation>%1: %2, %3</translation>
    </message>
</context>
<context>
    <name>ImportAnswers</name>
    <message>
        <source>Leave it out</source>
        <translation>Auslassen</translation>
    </message>
    <message>
        <source>Replace the library&apos;s</source>
        <translation>Das der Bibliothek ersetzen</translation>
    </message>
    <message>
        <source>Keep both, under a new name</source>
        <translation>Beide behalten, unter neuem Namen</translation>
    </message>
</context>
<context>
    <name>ImportChannelTable</name>
    <message>
        <source>pixel %1, %2</source>
        <translation>Pixel %1, %2</translation>
    </message>
    <message>
        <source>constant</source>
        <translation>Konstante</translation>
    </message>
    <message>
        <source>free for a desk</source>
        <translation>frei für ein Pult</translation>
    </message>
    <message>
        <source>Ch.</source>
        <translation>Kan.</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>What it gets</source>
        <translation>Was er erhält</translation>
    </message>
</context>
<context>
    <name>ImportDetails</name>
    <message numerus="yes">
        <source>%1, %2, %n channel(s)</source>
        <translation>
            <numerusform>%1, %2, %n Kanal</numerusform>
            <numerusform>%1, %2, %n Kanäle</numerusform>
        </translation>
    </message>
    <message>
        <source>The definition doesn&apos;t say where the pixels are: they are in a row.</source>
        <translation>Die Definition sagt nicht, wo die Pixel liegen: Sie liegen in einer Reihe.</translation>
    </message>
    <message>
        <source>The last pixel is not sent: it ends on channel 512.</source>
        <translation>Das letzte Pixel wird nicht gesendet: Es endet auf Kanal 512.</translation>
    </message>
    <message>
        <source>%1 - %2</source>
        <translation>%1 - %2</translation>
    </message>
    <message>
        <source>Picture of the pixels</source>
        <translation>Bild der Pixel</translation>
    </message>
    <message>
        <source>&amp;The library has another of this name:</source>
        <translation>Die &amp;Bibliothek hat ein anderes mit diesem Namen:</translation>
    </message>
    <message>
        <source>The library has another of this name</source>
        <translation>Die Bibliothek hat ein anderes mit diesem Namen</translation>
    </message>
    <message>
        <source>Channels of the fixture</source>
        <translation>Kanäle des Geräts</translation>
    </message>
</context>
<context>
    <name>ImportFixturesDialog</name>
    <message>
        <source>Cancelling...</source>
        <translation>Wird abgebrochen...</translation>
    </message>
    <message>
        <source>No files of fixtures (.json, .qxf, .wfl) were found.</source>
        <translation>Es wurden keine Gerätedateien (.json, .qxf, .wfl) gefunden.</translation>
    </message>
    <message>
        <source>%1 of %2 fixtures to import.</source>
        <translation>%1 von %2 Geräten zu importieren.</translation>
    </message>
    <message>
        <source>In the library already: %1.</source>
        <translation>Schon in der Bibliothek: %1.</translation>
    </message>
    <message>
        <source>Other ones of a name in the library: %1.</source>
        <translation>Andere mit einem Namen aus der Bibliothek: %1.</translation>
    </message>
    <message>
        <source>Left out: %1.</source>
        <translation>Ausgelassen: %1.</translation>
    </message>
    <message>
        <source>Files that can&apos;t be read: %1.</source>
        <translation>Nicht lesbare Dateien: %1.</translation>
    </message>
    <message>
        <source>Fixture Files (*.wfl *.json *.qxf)</source>
        <translation>Gerätedateien (*.wfl *.json *.qxf)</translation>
    </message>
    <message>
        <source>Fixture Library File (*.wfl)</source>
        <translation>Gerätebibliothek (*.wfl)</translation>
    </message>
    <message>
        <source>Import Fixtures</source>
        <translation>Geräte importieren</translation>
    </message>
    <message>
        <source>&amp;Import</source>
        <translation>&amp;Importieren</translation>
    </message>
    <message>
        <source>Fixtures that were found</source>
        <translation>Gefundene Geräte</translation>
    </message>
    <message>
        <source>Find fixtures (Ctrl+F)</source>
        <translation>Geräte suchen (Strg+F)</translation>
    </message>
    <message>
        <source>Find fixtures</source>
        <translation>Geräte suchen</translation>
    </message>
    <message>
        <source>Which fixtures are shown</source>
        <translation>Welche Geräte gezeigt werden</translation>
    </message>
    <message>
        <source>All that was found</source>
        <translation>Alle gefundenen</translation>
    </message>
    <message>
        <source>New ones</source>
        <translation>Neue</translation>
    </message>
    <message>
        <source>Other ones of a name in the library</source>
        <translation>Andere mit einem Namen aus der Bibliothek</translation>
    </message>
    <message>
        <source>Those in the library already</source>
        <translation>Schon in der Bibliothek</translation>
    </message>
    <message>
        <source>What is left out</source>
        <translation>Ausgelassene</translation>
    </message>
    <message>
        <source>Add &amp;Files...</source>
        <translation>&amp;Dateien hinzufügen...</translation>
    </message>
    <message>
        <source>Add F&amp;older...</source>
        <translation>&amp;Ordner hinzufügen...</translation>
    </message>
    <message>
        <source>&amp;Check All</source>
        <translation>Alle &amp;wählen</translation>
    </message>
    <message>
        <source>Check &amp;None</source>
        <translation>&amp;Keine wählen</translation>
    </message>
    <message>
        <source>Where the library has &amp;another fixture of a name:</source>
        <translation>Wo die Bibliothek ein &amp;anderes Gerät mit gleichem Namen hat:</translation>
    </message>
    <message>
        <source>Where the library has another fixture of a name</source>
        <translation>Wo die Bibliothek ein anderes Gerät mit gleichem Namen hat</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Reading: %1 of %2 files</source>
        <translation>Wird gelesen: %1 von %2 Dateien</translation>
    </message>
    <message>
        <source>Importing: %1 of %2 fixtures</source>
        <translation>Wird importiert: %1 von %2 Geräten</translation>
    </message>
</context>
<context>
    <name>ImportTreeModel</name>
    <message>
        <source>Files that can&apos;t be read</source>
        <translation>Nicht lesbare Dateien</translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation>(ohne Namen)</translation>
    </message>
    <message>
        <source>nothing to import</source>
        <translation>nichts zu importieren</translation>
    </message>
    <message>
        <source>%1 of %2 to import</source>
        <translation>%1 von %2 zu importieren</translation>
    </message>
    <message>
        <source>%1x%2</source>
        <translation>%1x%2</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>In the library already</source>
        <translation>Schon in der Bibliothek</translation>
    </message>
    <message>
        <source>Another file has the same fixture</source>
        <translation>Eine andere Datei hat dasselbe Gerät</translation>
    </message>
    <message>
        <source>Replaces the library&apos;s fixture</source>
        <translation>Ersetzt das Gerät der Bibliothek</translation>
    </message>
    <message>
        <source>New, as &quot;%1&quot;</source>
        <translation>Neu, als „%1“</translation>
    </message>
    <message>
        <source>The library has another fixture of this name</source>
        <translation>Die Bibliothek hat ein anderes Gerät mit diesem Namen</translation>
    </message>
    <message>
        <source>DMX channels</source>
        <translation>DMX-Kanäle</translation>
    </message>
    <message>
        <source>Fixture</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation>Pixel</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Ch.</source>
        <translation>Kan.</translation>
    </message>
    <message>
        <source>What becomes of it</source>
        <translation>Was daraus wird</translation>
    </message>
</context>
<context>
    <name>Inspector</name>
    <message>
        <source>(multiple items selected)</source>
        <translation>(mehrere Elemente ausgewählt)</translation>
    </message>
    <message>
        <source>Mixed</source>
        <translation>Divers</translation>
    </message>
</context>
<context>
    <name>InspectorForm</name>
    <message>
        <source>Nothing is selected.</source>
        <translation>Nichts ist ausgewählt.</translation>
    </message>
    <message>
        <source>Fixture:</source>
        <translation>Gerät:</translation>
    </message>
    <message>
        <source>&amp;Description:</source>
        <translation>B&amp;eschreibung:</translation>
    </message>
    <message>
        <source>DMX Mapping &amp;Output:</source>
        <translation>DMX-Mapping-Ausgan&amp;g:</translation>
    </message>
    <message>
        <source>DMX Mapping Properties</source>
        <translation>DMX-Mapping-Eigenschaften</translation>
    </message>
    <message>
        <source>Not all of it has an Art-Net address.</source>
        <translation>Nicht alles davon hat eine Art-Net-Adresse.</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>&amp;Left:</source>
        <translation>&amp;Links:</translation>
    </message>
    <message>
        <source>&amp;Top:</source>
        <translation>&amp;Oben:</translation>
    </message>
    <message>
        <source>&amp;Width:</source>
        <translation>B&amp;reite:</translation>
    </message>
    <message>
        <source>Hei&amp;ght:</source>
        <translation>H&amp;öhe:</translation>
    </message>
    <message>
        <source>&amp;Rotation:</source>
        <translation>Ro&amp;tation:</translation>
    </message>
    <message>
        <source>Hori&amp;zontal Flip:</source>
        <translation>Horizo&amp;ntal spiegeln:</translation>
    </message>
    <message>
        <source>Vertic&amp;al Flip:</source>
        <translation>&amp;Vertikal spiegeln:</translation>
    </message>
</context>
<context>
    <name>LEDDialogCanvasSize</name>
    <message>
        <source>Canvas Size</source>
        <translation>Größe der Zeichenfläche</translation>
    </message>
    <message>
        <source>Change Canvas Size</source>
        <translation>Größe der Zeichenfläche ändern</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Keep fixture position and size</source>
        <translation>Position und Größe der Geräte behalten</translation>
    </message>
</context>
<context>
    <name>LEDDialogDMXUniverseMerging</name>
    <message>
        <source>(%1)</source>
        <translation>(%1)</translation>
    </message>
    <message>
        <source>DMX Universe Merging</source>
        <translation>DMX-Universen zusammenführen</translation>
    </message>
    <message>
        <source>Merge From:</source>
        <translation>Zusammenführen von:</translation>
    </message>
    <message>
        <source>Start Subnet:</source>
        <translation>Erstes Subnet:</translation>
    </message>
    <message>
        <source>Start Universe:</source>
        <translation>Erstes Universum:</translation>
    </message>
    <message>
        <source>Consecutive Universes:</source>
        <translation>Anzahl Universen:</translation>
    </message>
    <message>
        <source>Merge To:</source>
        <translation>Zusammenführen nach:</translation>
    </message>
    <message>
        <source>Toggle merger on/off</source>
        <translation>Merger ein- oder ausschalten</translation>
    </message>
    <message>
        <source>How It Works...</source>
        <translation>So funktioniert es...</translation>
    </message>
    <message>
        <source>Merge both DMX Input and PixelWeft from one range of universes and output to another range of universes.</source>
        <translation>Führt den DMX-Eingang und PixelWeft in einem Bereich von Universen zusammen und gibt sie in einem anderen aus.</translation>
    </message>
    <message>
        <source>Universe ranges &quot;Merge From&quot; and &quot;Merge To&quot; should never overlap.</source>
        <translation>Die Bereiche „Zusammenführen von“ und „Zusammenführen nach“ dürfen sich nie überschneiden.</translation>
    </message>
    <message>
        <source>A range goes beyond universe 15/15 into net 1, where no fixture can be patched.</source>
        <translation>Ein Bereich reicht über Universum 15/15 hinaus in Net 1, wo kein Gerät gepatcht werden kann.</translation>
    </message>
    <message>
        <source>Merger cannot operate with fixtures set in Unicast and no fixture should send directly to its output range of universes.</source>
        <translation>Der Merger arbeitet nicht mit Geräten, die auf Unicast gestellt sind, und kein Gerät darf direkt in seinen Ausgabebereich senden.</translation>
    </message>
    <message>
        <source>DMX Source:</source>
        <translation>DMX-Quelle:</translation>
    </message>
    <message>
        <source>PixelWeft</source>
        <translation>PixelWeft</translation>
    </message>
    <message>
        <source>(2.X.X.X)</source>
        <translation>(2.X.X.X)</translation>
    </message>
    <message>
        <source>ReelCommand</source>
        <translation>ReelCommand</translation>
    </message>
    <message>
        <source>(ALL)</source>
        <translation>(ALL)</translation>
    </message>
    <message>
        <source>Merger On</source>
        <translation>Merger ein</translation>
    </message>
    <message>
        <source>Merger Off</source>
        <translation>Merger aus</translation>
    </message>
</context>
<context>
    <name>LEDDialogDuplicateMappingElement</name>
    <message>
        <source>Duplicate Element</source>
        <translation>Element duplizieren</translation>
    </message>
    <message>
        <source>Duplicate Mapping Element</source>
        <translation>Mapping-Element duplizieren</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>&amp;Horizontally:</source>
        <translation>&amp;Horizontal:</translation>
    </message>
    <message>
        <source>Elements side by side</source>
        <translation>Elemente nebeneinander</translation>
    </message>
    <message>
        <source>&amp;Vertically:</source>
        <translation>&amp;Vertikal:</translation>
    </message>
    <message>
        <source>Elements one above the other</source>
        <translation>Elemente übereinander</translation>
    </message>
    <message>
        <source>DMX Patch Direction</source>
        <translation>Richtung des DMX-Patchs</translation>
    </message>
    <message>
        <source>From left to right</source>
        <translation>Von links nach rechts</translation>
    </message>
    <message>
        <source>From right to left</source>
        <translation>Von rechts nach links</translation>
    </message>
    <message>
        <source>From top to bottom</source>
        <translation>Von oben nach unten</translation>
    </message>
    <message>
        <source>From bottom to top</source>
        <translation>Von unten nach oben</translation>
    </message>
    <message>
        <source>First direction of the addresses</source>
        <translation>Erste Richtung der Adressen</translation>
    </message>
    <message>
        <source>&amp;First:</source>
        <translation>&amp;Zuerst:</translation>
    </message>
    <message>
        <source>Second direction of the addresses</source>
        <translation>Zweite Richtung der Adressen</translation>
    </message>
    <message>
        <source>&amp;Then:</source>
        <translation>&amp;Dann:</translation>
    </message>
    <message>
        <source>Elements in all: %1</source>
        <translation>Elemente insgesamt: %1</translation>
    </message>
    <message>
        <source>Elements in all: %1. No more than %2 can be made at a time.</source>
        <translation>Elemente insgesamt: %1. Mehr als %2 auf einmal sind nicht möglich.</translation>
    </message>
</context>
<context>
    <name>LEDDialogManualNode</name>
    <message>
        <source>Manual IP</source>
        <translation>Manuelle IP</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>IP Address</source>
        <translation>IP-Adresse</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>&amp;IP Address:</source>
        <translation>&amp;IP-Adresse:</translation>
    </message>
    <message>
        <source>Part %1 of the address is missing: a number from 0 to 255</source>
        <translation>Teil %1 der Adresse fehlt: eine Zahl von 0 bis 255</translation>
    </message>
    <message>
        <source>Delete manual address</source>
        <translation>Manuelle Adresse löschen</translation>
    </message>
    <message>
        <source>If you delete this manual address, addresses of all mapped fixtures that use it will be set to auto.</source>
        <translation>Wenn Sie diese manuelle Adresse löschen, werden die Adressen aller Geräte, die sie benutzen, auf Auto gesetzt.</translation>
    </message>
</context>
<context>
    <name>LedDialogAddIPrange</name>
    <message>
        <source>IP Range</source>
        <translation>IP-Bereich</translation>
    </message>
    <message>
        <source>X stands for any number, as in 2.X.X.X</source>
        <translation>X steht für jede Zahl, wie in 2.X.X.X</translation>
    </message>
    <message>
        <source>Addresses:</source>
        <translation>Adressen:</translation>
    </message>
</context>
<context>
    <name>LibraryList</name>
    <message>
        <source>Find fixtures</source>
        <translation>Geräte suchen</translation>
    </message>
    <message>
        <source>No fixture found</source>
        <translation>Kein Gerät gefunden</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
<context>
    <name>LibraryPanel</name>
    <message>
        <source>Fixture Library Not Saved</source>
        <translation>Gerätebibliothek nicht gespeichert</translation>
    </message>
    <message>
        <source>The fixture library could not be written to %1.

%2

%3 They are saved with the next change if the file can be written then.</source>
        <translation>Die Gerätebibliothek konnte nicht in %1 geschrieben werden.

%2

%3 Mit der nächsten Änderung werden sie gespeichert, falls die Datei dann geschrieben werden kann.</translation>
    </message>
    <message>
        <source>The file is as it was; your fixtures are kept until PixelWeft ends.</source>
        <translation>Die Datei ist unverändert; Ihre Geräte bleiben erhalten, bis PixelWeft endet.</translation>
    </message>
    <message>
        <source>PixelWeft works with its built-in fixtures and yours in memory until it ends.</source>
        <translation>PixelWeft arbeitet bis zum Beenden mit den mitgelieferten Geräten und Ihren im Speicher.</translation>
    </message>
    <message>
        <source>Fixture Library Not Read</source>
        <translation>Gerätebibliothek nicht gelesen</translation>
    </message>
    <message>
        <source>A part of the fixture library could not be read.

The file as it was is kept as %1.</source>
        <translation>Ein Teil der Gerätebibliothek konnte nicht gelesen werden.

Die bisherige Datei wurde als %1 aufbewahrt.</translation>
    </message>
    <message>
        <source>Delete Used Fixture</source>
        <translation>Benutztes Gerät löschen</translation>
    </message>
    <message>
        <source>This fixture is used in your current mapping file.

It cannot be deleted until you remove it from your mapping.</source>
        <translation>Dieses Gerät wird in Ihrem Mapping benutzt.

Es kann erst gelöscht werden, wenn Sie es aus dem Mapping entfernen.</translation>
    </message>
    <message>
        <source>Are you sure you want to delete this fixture from the library?

Manufacturer: %1
Product: %2</source>
        <translation>Möchten Sie dieses Gerät wirklich aus der Bibliothek löschen?

Hersteller: %1
Produkt: %2</translation>
    </message>
    <message>
        <source>Delete Fixture</source>
        <translation>Gerät löschen</translation>
    </message>
    <message>
        <source>Import Fixtures</source>
        <translation>Geräte importieren</translation>
    </message>
    <message>
        <source>%1 could not be read whole. The fixtures that could be read are in your library.</source>
        <translation>%1 konnte nicht ganz gelesen werden. Die lesbaren Geräte sind in Ihrer Bibliothek.</translation>
    </message>
</context>
<context>
    <name>ManualNodeEditing</name>
    <message>
        <source>%1 is for all nodes of the network, not for one</source>
        <translation>%1 gilt für alle Nodes des Netzwerks, nicht für einen</translation>
    </message>
    <message>
        <source>%1 is in the list already: %2</source>
        <translation>%1 ist schon in der Liste: %2</translation>
    </message>
</context>
<context>
    <name>MapPicture</name>
    <message>
        <source>%1x%2</source>
        <translation>%1x%2</translation>
    </message>
    <message>
        <source>%1x%2, first pixel in column %3, row %4</source>
        <translation>%1x%2, erstes Pixel in Spalte %3, Zeile %4</translation>
    </message>
    <message>
        <source>%1x%2, first pixel on the left</source>
        <translation>%1x%2, erstes Pixel links</translation>
    </message>
    <message>
        <source>%1x%2, first pixel on the right</source>
        <translation>%1x%2, erstes Pixel rechts</translation>
    </message>
    <message>
        <source>%1x%2, first pixel at the top left</source>
        <translation>%1x%2, erstes Pixel oben links</translation>
    </message>
    <message>
        <source>%1x%2, first pixel at the top right</source>
        <translation>%1x%2, erstes Pixel oben rechts</translation>
    </message>
    <message>
        <source>%1x%2, first pixel at the bottom left</source>
        <translation>%1x%2, erstes Pixel unten links</translation>
    </message>
    <message>
        <source>%1x%2, first pixel at the bottom right</source>
        <translation>%1x%2, erstes Pixel unten rechts</translation>
    </message>
</context>
<context>
    <name>MappedDeviceModel</name>
    <message>
        <source>Manufacturer</source>
        <translation>Hersteller</translation>
    </message>
    <message>
        <source>Product Name</source>
        <translation>Produktname</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>ID</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Node</source>
        <translation>Node</translation>
    </message>
</context>
<context>
    <name>MappingFile</name>
    <message>
        <source>it has no description</source>
        <translation>es hat keine Beschreibung</translation>
    </message>
    <message>
        <source>it names no fixture</source>
        <translation>es nennt kein Gerät</translation>
    </message>
    <message>
        <source>its fixture &quot;%1&quot; is unknown</source>
        <translation>sein Gerät „%1“ ist unbekannt</translation>
    </message>
    <message>
        <source>its place on the canvas is damaged</source>
        <translation>sein Platz auf der Zeichenfläche ist beschädigt</translation>
    </message>
    <message>
        <source>its address is damaged</source>
        <translation>seine Adresse ist beschädigt</translation>
    </message>
    <message>
        <source>It holds no mapping.</source>
        <translation>Sie enthält kein Mapping.</translation>
    </message>
    <message>
        <source>The version of the mapping is missing or damaged.</source>
        <translation>Die Version des Mappings fehlt oder ist beschädigt.</translation>
    </message>
    <message>
        <source>The size of its canvas is missing or damaged.</source>
        <translation>Die Größe der Zeichenfläche fehlt oder ist beschädigt.</translation>
    </message>
    <message>
        <source>Its canvas of %1 x %2 pixels is impossible: a canvas has 1 to %3 pixels on each side.</source>
        <translation>Die Zeichenfläche von %1 x %2 Pixeln ist unmöglich: Sie hat je Seite 1 bis %3 Pixel.</translation>
    </message>
    <message>
        <source>The name of the mapping is missing.</source>
        <translation>Der Name des Mappings fehlt.</translation>
    </message>
    <message>
        <source>Element %1</source>
        <translation>Element %1</translation>
    </message>
    <message>
        <source>%1 of its %2 manual nodes can&apos;t be read: a node needs a name and an address, and those behind one without a name are left out.</source>
        <translation>Nicht lesbare manuelle Nodes: %1 von %2. Ein Node braucht einen Namen und eine Adresse; alle nach einem Eintrag ohne Namen entfallen.</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>%1 of its %2 elements can&apos;t be read:

%3</source>
        <translation>Nicht lesbare Elemente: %1 von %2

%3</translation>
    </message>
</context>
<context>
    <name>MergerPicture</name>
    <message>
        <source>How the merger works</source>
        <translation>Wie der Merger arbeitet</translation>
    </message>
    <message>
        <source>DMX input and PixelWeft on %1, merged and sent on %2</source>
        <translation>DMX-Eingang und PixelWeft auf %1, zusammengeführt und gesendet auf %2</translation>
    </message>
    <message>
        <source>Merge From</source>
        <translation>Zusammenführen von</translation>
    </message>
    <message>
        <source>Merge To</source>
        <translation>Zusammenführen nach</translation>
    </message>
    <message>
        <source>DMX Input</source>
        <translation>DMX-Eingang</translation>
    </message>
    <message>
        <source>PixelWeft</source>
        <translation>PixelWeft</translation>
    </message>
</context>
<context>
    <name>NetworkChoice</name>
    <message>
        <source>No network interfaces match network %1</source>
        <translation>Kein Netzwerkadapter passt zum Netzwerk %1</translation>
    </message>
    <message>
        <source>More than one network adapter matches network %1</source>
        <translation>Mehr als ein Netzwerkadapter passt zum Netzwerk %1</translation>
    </message>
    <message>
        <source>Mapping file has an invalid braodcast IP specified %1</source>
        <translation>Im Mapping steht eine ungültige Broadcast-IP: %1</translation>
    </message>
    <message>
        <source>This document sends on no network: choose one in the tool bar to send.</source>
        <translation>Dieses Dokument sendet in kein Netzwerk: Wählen Sie in der Werkzeugleiste eines, um zu senden.</translation>
    </message>
    <message>
        <source>This document sends on %1 (%2, %3)</source>
        <translation>Dieses Dokument sendet in %1 (%2, %3)</translation>
    </message>
</context>
<context>
    <name>NetworkPanel</name>
    <message>
        <source>Network: </source>
        <translation>Netzwerk: </translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source> Sender: </source>
        <translation> Sender: </translation>
    </message>
    <message>
        <source>Sender</source>
        <translation>Sender</translation>
    </message>
    <message>
        <source>Merger</source>
        <translation>Merger</translation>
    </message>
    <message>
        <source>Merger properties</source>
        <translation>Merger-Einstellungen</translation>
    </message>
    <message>
        <source>Merger properties...</source>
        <translation>Merger-Einstellungen...</translation>
    </message>
    <message>
        <source>Disabled</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>New...</source>
        <translation>Neu...</translation>
    </message>
    <message>
        <source>Edit...</source>
        <translation>Bearbeiten...</translation>
    </message>
    <message>
        <source>Adapter %1, our address in it is %2</source>
        <translation>Adapter %1, unsere Adresse darin ist %2</translation>
    </message>
    <message>
        <source>Adapter %1, our address in it is %2: not connected</source>
        <translation>Adapter %1, unsere Adresse darin ist %2: nicht verbunden</translation>
    </message>
    <message>
        <source>No adapter has this network now</source>
        <translation>Zurzeit hat kein Adapter dieses Netzwerk</translation>
    </message>
    <message>
        <source>No network is chosen: nothing is sent</source>
        <translation>Es ist kein Netzwerk gewählt: Nichts wird gesendet</translation>
    </message>
    <message>
        <source>No adapter has the network %1 now: nothing is sent</source>
        <translation>Zurzeit hat kein Adapter das Netzwerk %1: Nichts wird gesendet</translation>
    </message>
    <message>
        <source>Network %1 on adapter %2, our address in it is %3</source>
        <translation>Netzwerk %1 an Adapter %2, unsere Adresse darin ist %3</translation>
    </message>
    <message>
        <source>Network %1 on adapter %2, our address in it is %3: not connected</source>
        <translation>Netzwerk %1 an Adapter %2, unsere Adresse darin ist %3: nicht verbunden</translation>
    </message>
    <message>
        <source>The merger&apos;s ranges in this document overlap</source>
        <translation>Die Bereiche des Mergers in diesem Dokument überschneiden sich</translation>
    </message>
    <message>
        <source>Toggle merger on/off</source>
        <translation>Merger ein- oder ausschalten</translation>
    </message>
</context>
<context>
    <name>NodeComboBox</name>
    <message>
        <source>Manual...</source>
        <translation>Manuell...</translation>
    </message>
    <message>
        <source>Edit...</source>
        <translation>Bearbeiten...</translation>
    </message>
</context>
<context>
    <name>OrderPicture</name>
    <message>
        <source>Picture of the order</source>
        <translation>Bild der Reihenfolge</translation>
    </message>
</context>
<context>
    <name>PatchExport</name>
    <message>
        <source>An internal error: %1.</source>
        <translation>Ein interner Fehler: %1.</translation>
    </message>
    <message>
        <source>Export Patch</source>
        <translation>Patch exportieren</translation>
    </message>
    <message>
        <source>PDF files (*.pdf)</source>
        <translation>PDF-Dateien (*.pdf)</translation>
    </message>
    <message>
        <source>CSV files (*.csv)</source>
        <translation>CSV-Dateien (*.csv)</translation>
    </message>
    <message>
        <source>%1 is there already. Do you want to replace it?</source>
        <translation>%1 ist schon vorhanden. Möchten Sie die Datei ersetzen?</translation>
    </message>
    <message>
        <source>The patch is being written...</source>
        <translation>Der Patch wird geschrieben...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>The patch is being written. The program closes when that is done.</source>
        <translation>Der Patch wird geschrieben. Das Programm schließt sich danach.</translation>
    </message>
    <message>
        <source>Patch Not Exported</source>
        <translation>Patch nicht exportiert</translation>
    </message>
    <message>
        <source>The patch could not be written to %1.

%2

A file that was there is as it was.</source>
        <translation>Der Patch konnte nicht in %1 geschrieben werden.

%2

Eine schon vorhandene Datei ist unverändert.</translation>
    </message>
</context>
<context>
    <name>PatchFaults</name>
    <message>
        <source>The node %1 does not answer. Check its power, its cable and its address, or choose another node.</source>
        <translation>Der Node %1 antwortet nicht. Prüfen Sie Strom, Kabel und Adresse, oder wählen Sie einen anderen Node.</translation>
    </message>
    <message>
        <source>A universe ends at channel 512, and what lies outside is not sent. Choose another first channel, or another universe.</source>
        <translation>Ein Universum endet mit Kanal 512; was außerhalb liegt, wird nicht gesendet. Wählen Sie einen anderen ersten Kanal oder ein anderes Universum.</translation>
    </message>
    <message>
        <source>Shares channels of universe %1 with another fixture, so that only one of the two is right. Give one of them a free address.</source>
        <translation>Teilt Kanäle des Universums %1 mit einem anderen Gerät, sodass nur eines von beiden stimmt. Geben Sie einem davon eine freie Adresse.</translation>
    </message>
    <message>
        <source>Universe %1 has fixtures with node Auto and others with a chosen node: a node that gets both shows two pictures in turn. Choose the same node for all fixtures of the universe, or Auto.</source>
        <translation>Universum %1 hat Geräte mit Node Auto und andere mit einem gewählten Node: Ein Node, der beides erhält, zeigt abwechselnd zwei Bilder. Wählen Sie für alle Geräte des Universums denselben Node oder Auto.</translation>
    </message>
</context>
<context>
    <name>PatchProblem</name>
    <message>
        <source>Begins on channel %2, outside of channels 1 to 512 of universe %1</source>
        <translation>Beginnt auf Kanal %2, außerhalb der Kanäle 1 bis 512 von Universum %1</translation>
    </message>
    <message>
        <source>Nothing of it is sent.</source>
        <translation>Nichts davon wird gesendet.</translation>
    </message>
    <message>
        <source>Reaches beyond universe %1: channels %2 to %3, of 512</source>
        <translation>Reicht über Universum %1 hinaus: Kanäle %2 bis %3 von 512</translation>
    </message>
    <message>
        <source>What lies beyond 512 is not sent.</source>
        <translation>Was hinter 512 liegt, wird nicht gesendet.</translation>
    </message>
    <message>
        <source>The end of universe %1 splits a pixel on channels %2 to %3</source>
        <translation>Das Ende von Universum %1 teilt ein Pixel auf den Kanälen %2 bis %3</translation>
    </message>
    <message>
        <source>That pixel has a wrong colour, and what lies beyond 512 is not sent.</source>
        <translation>Dieses Pixel hat eine falsche Farbe, und was hinter 512 liegt, wird nicht gesendet.</translation>
    </message>
    <message>
        <source>Channels %2 to %3 of universe %1 are written by %7 elements</source>
        <translation>Die Kanäle %2 bis %3 von Universum %1 werden von %7 Elementen geschrieben</translation>
    </message>
    <message>
        <source>Of two on one channel, only one is right.</source>
        <translation>Von zweien auf einem Kanal stimmt nur eines.</translation>
    </message>
    <message>
        <source>Universe %1 has elements with node Auto, and others with node %4</source>
        <translation>Universum %1 hat Elemente mit Node Auto und andere mit Node %4</translation>
    </message>
    <message>
        <source>A node that gets both shows two pictures in turn: it flickers.</source>
        <translation>Ein Node, der beides erhält, zeigt abwechselnd zwei Bilder: Er flackert.</translation>
    </message>
    <message>
        <source>Node %4 is outside of the network</source>
        <translation>Node %4 liegt außerhalb des Netzwerks</translation>
    </message>
    <message>
        <source>Nothing is sent to it. Choose another network, or another node for its elements.</source>
        <translation>Nichts wird an ihn gesendet. Wählen Sie ein anderes Netzwerk oder für seine Elemente einen anderen Node.</translation>
    </message>
    <message>
        <source>Node %4 does not answer</source>
        <translation>Node %4 antwortet nicht</translation>
    </message>
    <message>
        <source>Its elements may stay dark. Check its power, its cable and its address, or choose another node.</source>
        <translation>Seine Elemente bleiben vielleicht dunkel. Prüfen Sie Strom, Kabel und Adresse, oder wählen Sie einen anderen Node.</translation>
    </message>
    <message>
        <source>Node %4 has no port for universe %1</source>
        <translation>Node %4 hat keinen Port für Universum %1</translation>
    </message>
    <message>
        <source>The node is sent the universe and does not put it out. Patch to one of its ports, or set the node.</source>
        <translation>Der Node erhält das Universum und gibt es nicht aus. Patchen Sie auf einen seiner Ports, oder stellen Sie den Node um.</translation>
    </message>
    <message>
        <source>No node subscribes to universe %1</source>
        <translation>Kein Node abonniert Universum %1</translation>
    </message>
    <message>
        <source>It is not sent: with auto-unicast a universe goes to the nodes that announced it. Set a node to it, or patch to a universe of one.</source>
        <translation>Es wird nicht gesendet: Mit Auto-Unicast geht ein Universum an die Nodes, die es angekündigt haben. Stellen Sie einen Node darauf ein, oder patchen Sie auf ein Universum eines Nodes.</translation>
    </message>
    <message>
        <source>No node that answers puts out universe %1</source>
        <translation>Kein antwortender Node gibt Universum %1 aus</translation>
    </message>
    <message>
        <source>It is sent to all, and its elements may stay dark. Set a node to it, or patch to a universe of one.</source>
        <translation>Es wird an alle gesendet, und seine Elemente bleiben vielleicht dunkel. Stellen Sie einen Node darauf ein, oder patchen Sie auf ein Universum eines Nodes.</translation>
    </message>
    <message>
        <source>%4 sends universe %1, too</source>
        <translation>Auch %4 sendet Universum %1</translation>
    </message>
    <message>
        <source>Nodes mix the two, or show them in turn. Take the universe out there, or patch to another one.</source>
        <translation>Nodes mischen beide oder zeigen sie abwechselnd. Nehmen Sie das Universum dort heraus, oder patchen Sie auf ein anderes.</translation>
    </message>
    <message>
        <source>%2 universes go to all nodes, 40 times a second</source>
        <translation>%2 Universen gehen 40-mal in der Sekunde an alle Nodes</translation>
    </message>
    <message>
        <source>Each node must take in all of them, and slow ones fall behind. Choose auto-unicast in the preferences, or nodes for the elements.</source>
        <translation>Jeder Node muss alle annehmen, und langsame kommen nicht nach. Wählen Sie in den Einstellungen Auto-Unicast oder für die Elemente Nodes.</translation>
    </message>
    <message>
        <source>Patched into universe %1, on which the merger sends</source>
        <translation>In Universum %1 gepatcht, auf dem der Merger sendet</translation>
    </message>
    <message>
        <source>They overwrite what the merger puts there.</source>
        <translation>Sie überschreiben, was der Merger dort ausgibt.</translation>
    </message>
    <message>
        <source>Universe %1 is merged: its elements cannot have node %4</source>
        <translation>Universum %1 wird zusammengeführt: Seine Elemente können Node %4 nicht haben</translation>
    </message>
    <message>
        <source>They are sent on universe %8 to all nodes, or to those that announce it.</source>
        <translation>Ihre Daten werden auf Universum %8 an alle Nodes gesendet oder an die, die es ankündigen.</translation>
    </message>
    <message>
        <source>Universe %1 is merged and sent on universe %8</source>
        <translation>Universum %1 wird zusammengeführt und auf Universum %8 gesendet</translation>
    </message>
    <message>
        <source>Its elements are laid on what is received.</source>
        <translation>Seine Elemente werden über das Empfangene gelegt.</translation>
    </message>
    <message>
        <source>Universe %1 goes to several nodes: %6</source>
        <translation>Universum %1 geht an mehrere Nodes: %6</translation>
    </message>
    <message>
        <source>Each gets its own elements. All is well if it is meant so.</source>
        <translation>Jeder erhält seine eigenen Elemente. Ist das so gemeint, ist alles in Ordnung.</translation>
    </message>
    <message>
        <source>Several nodes put out universe %1: %6</source>
        <translation>Mehrere Nodes geben Universum %1 aus: %6</translation>
    </message>
    <message>
        <source>They show the same. All is well if it is meant so; else set another universe on one of them.</source>
        <translation>Sie zeigen dasselbe. Ist das so gemeint, ist alles in Ordnung; sonst stellen Sie auf einem davon ein anderes Universum ein.</translation>
    </message>
    <message>
        <source>Nothing is patched to %6 of node %4</source>
        <translation>Auf %6 von Node %4 ist nichts gepatcht</translation>
    </message>
    <message>
        <source>What hangs there stays dark.</source>
        <translation>Was dort hängt, bleibt dunkel.</translation>
    </message>
    <message>
        <source>&quot;%5&quot; has changed in the library</source>
        <translation>„%5“ hat sich in der Bibliothek geändert</translation>
    </message>
    <message>
        <source>These elements are sent as it was before.</source>
        <translation>Die Daten dieser Elemente werden mit der bisherigen Definition gesendet.</translation>
    </message>
    <message>
        <source>&quot;%5&quot; is gone from the library</source>
        <translation>„%5“ fehlt in der Bibliothek</translation>
    </message>
    <message>
        <source>These elements are sent as before. Import the fixture again to edit it.</source>
        <translation>Die Daten dieser Elemente werden mit der bisherigen Definition gesendet. Importieren Sie das Gerät erneut, um es zu bearbeiten.</translation>
    </message>
    <message>
        <source>Lies beside the canvas</source>
        <translation>Liegt neben der Zeichenfläche</translation>
    </message>
    <message>
        <source>All of its pixels are black.</source>
        <translation>Alle seine Pixel sind schwarz.</translation>
    </message>
    <message>
        <source>Hangs over the edge of the canvas</source>
        <translation>Ragt über den Rand der Zeichenfläche</translation>
    </message>
    <message>
        <source>Its pixels beside the canvas are black.</source>
        <translation>Seine Pixel neben der Zeichenfläche sind schwarz.</translation>
    </message>
    <message>
        <source>Is smaller on the canvas than its %2 × %3 pixels</source>
        <translation>Ist auf der Zeichenfläche kleiner als seine %2 × %3 Pixel</translation>
    </message>
    <message>
        <source>Neighbouring pixels show the same.</source>
        <translation>Benachbarte Pixel zeigen dasselbe.</translation>
    </message>
    <message>
        <source>Fault</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Caution</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Hint</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Give a Free &amp;Address</source>
        <translation>&amp;Freie Adresse geben</translation>
    </message>
    <message>
        <source>Set the Node to &amp;Auto</source>
        <translation>Node au&amp;f Auto setzen</translation>
    </message>
    <message>
        <source>&amp;Take the Library&apos;s Definition</source>
        <translation>De&amp;finition der Bibliothek übernehmen</translation>
    </message>
    <message>
        <source>&amp;Bring onto the Canvas</source>
        <translation>Au&amp;f die Zeichenfläche holen</translation>
    </message>
    <message>
        <source>Enlarge to Its &amp;Pixels</source>
        <translation>Auf &amp;Pixelgröße vergrößern</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 und %2 weitere</translation>
    </message>
    <message>
        <source>%1: %2. %3</source>
        <translation>%1: %2. %3</translation>
    </message>
    <message>
        <source>%1: %2. %3 (%4)</source>
        <translation>%1: %2. %3 (%4)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2)</source>
        <translation>„%1“ (%2)</translation>
    </message>
</context>
<context>
    <name>PatchSheet</name>
    <message>
        <source>%1 - %2</source>
        <translation>%1 - %2</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1x%2</source>
        <translation>%1x%2</translation>
    </message>
    <message>
        <source>Patch</source>
        <translation>Patch</translation>
    </message>
    <message>
        <source>Elements: %1</source>
        <translation>Elemente: %1</translation>
    </message>
    <message>
        <source>Universes: %1</source>
        <translation>Universen: %1</translation>
    </message>
    <message>
        <source>Canvas: %1 x %2 pixels</source>
        <translation>Zeichenfläche: %1 x %2 Pixel</translation>
    </message>
    <message>
        <source>Network: %1</source>
        <translation>Netzwerk: %1</translation>
    </message>
    <message>
        <source>Universes without a node (Auto) go to the nodes that announce them (Auto-Unicast).</source>
        <translation>Universen ohne Node (Auto) gehen an die Nodes, die sie ankündigen (Auto-Unicast).</translation>
    </message>
    <message>
        <source>Universes without a node (Auto) go to all nodes (Broadcast).</source>
        <translation>Universen ohne Node (Auto) gehen an alle Nodes (Broadcast).</translation>
    </message>
    <message>
        <source>Merged: what is patched to %1 is laid over received DMX and comes out on %2.</source>
        <translation>Zusammengeführt: Was auf %1 gepatcht ist, wird über empfangenes DMX gelegt und kommt auf %2 heraus.</translation>
    </message>
    <message>
        <source>Universe</source>
        <translation>Universum</translation>
    </message>
    <message>
        <source>Port-Address</source>
        <translation>Port-Adresse</translation>
    </message>
    <message>
        <source>Sent to</source>
        <translation>Gesendet an</translation>
    </message>
    <message>
        <source>Elements</source>
        <translation>Elemente</translation>
    </message>
    <message>
        <source>Channels used</source>
        <translation>Benutzte Kanäle</translation>
    </message>
    <message>
        <source>free</source>
        <translation>frei</translation>
    </message>
    <message>
        <source>merged</source>
        <translation>zusammengeführt</translation>
    </message>
    <message>
        <source>Universes</source>
        <translation>Universen</translation>
    </message>
    <message>
        <source>Universes (continued)</source>
        <translation>Universen (Fortsetzung)</translation>
    </message>
    <message>
        <source>answers</source>
        <translation>antwortet</translation>
    </message>
    <message>
        <source>entered by hand</source>
        <translation>von Hand eingetragen</translation>
    </message>
    <message>
        <source>does not answer</source>
        <translation>antwortet nicht</translation>
    </message>
    <message>
        <source>of the patch</source>
        <translation>aus dem Patch</translation>
    </message>
    <message>
        <source>No node is known.</source>
        <translation>Es ist kein Node bekannt.</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Ports</source>
        <translation>Ports</translation>
    </message>
    <message>
        <source>Elements to it alone</source>
        <translation>Elemente nur an ihn</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Nodes</source>
        <translation>Nodes</translation>
    </message>
    <message>
        <source>Nodes (continued)</source>
        <translation>Nodes (Fortsetzung)</translation>
    </message>
    <message>
        <source>Merged: the other channels have what is received</source>
        <translation>Zusammengeführt: Die übrigen Kanäle tragen das Empfangene</translation>
    </message>
    <message>
        <source>Free: none</source>
        <translation>Frei: nichts</translation>
    </message>
    <message numerus="yes">
        <source>Free: %1 (%n channel(s))</source>
        <translation>
            <numerusform>Frei: %1 (%n Kanal)</numerusform>
            <numerusform>Frei: %1 (%n Kanäle)</numerusform>
        </translation>
    </message>
    <message>
        <source>its subscribers (Auto)</source>
        <translation>seine Abonnenten (Auto)</translation>
    </message>
    <message>
        <source>all nodes (Auto)</source>
        <translation>alle Nodes (Auto)</translation>
    </message>
    <message>
        <source>By universe</source>
        <translation>Nach Universum</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>Kanäle</translation>
    </message>
    <message>
        <source>No.</source>
        <translation>Nr.</translation>
    </message>
    <message>
        <source>Element</source>
        <translation>Element</translation>
    </message>
    <message>
        <source>Fixture</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation>Pixel</translation>
    </message>
    <message>
        <source>Patched to</source>
        <translation>Gepatcht auf</translation>
    </message>
    <message>
        <source>Universe %1 (%2) to %3</source>
        <translation>Universum %1 (%2) an %3</translation>
    </message>
    <message>
        <source>%1, cut</source>
        <translation>%1, abgeschnitten</translation>
    </message>
    <message>
        <source>%1 !</source>
        <translation>%1 !</translation>
    </message>
    <message>
        <source>! shares channels with another element</source>
        <translation>! teilt Kanäle mit einem anderen Element</translation>
    </message>
    <message>
        <source>%1 (continued)</source>
        <translation>%1 (Fortsetzung)</translation>
    </message>
    <message>
        <source>Not sent</source>
        <translation>Nicht gesendet</translation>
    </message>
    <message>
        <source>Not sent (continued)</source>
        <translation>Nicht gesendet (Fortsetzung)</translation>
    </message>
    <message>
        <source>By element</source>
        <translation>Nach Element</translation>
    </message>
    <message>
        <source>Comes out on</source>
        <translation>Kommt heraus auf</translation>
    </message>
    <message>
        <source>Node</source>
        <translation>Node</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>%1/%2</source>
        <translation>%1/%2</translation>
    </message>
    <message>
        <source>Elements (continued)</source>
        <translation>Elemente (Fortsetzung)</translation>
    </message>
    <message>
        <source>Part %1 of the layout</source>
        <translation>Teil %1 der Anordnung</translation>
    </message>
    <message>
        <source>Layout</source>
        <translation>Anordnung</translation>
    </message>
    <message>
        <source>The numbers are those of the tables. A dot is on an element&apos;s first pixel, the one on its lowest channel.</source>
        <translation>Die Nummern sind die der Tabellen. Ein Punkt liegt auf dem ersten Pixel eines Elements, dem auf seinem niedrigsten Kanal.</translation>
    </message>
    <message>
        <source>Not on the canvas: %1</source>
        <translation>Nicht auf der Zeichenfläche: %1</translation>
    </message>
    <message>
        <source>The dashed parts follow in a larger scale.</source>
        <translation>Die gestrichelten Teile folgen in größerem Maßstab.</translation>
    </message>
    <message>
        <source>%1 / %2</source>
        <translation>%1 / %2</translation>
    </message>
</context>
<context>
    <name>PatchSheetDialog</name>
    <message>
        <source>Export Patch</source>
        <translation>Patch exportieren</translation>
    </message>
    <message>
        <source>&amp;PDF, for paper</source>
        <translation>&amp;PDF, für Papier</translation>
    </message>
    <message>
        <source>&amp;CSV, for spreadsheets and scripts</source>
        <translation>&amp;CSV, für Tabellen und Skripte</translation>
    </message>
    <message>
        <source>&amp;Export...</source>
        <translation>&amp;Exportieren...</translation>
    </message>
    <message>
        <source>&amp;Title:</source>
        <translation>&amp;Titel:</translation>
    </message>
    <message>
        <source>P&amp;aper:</source>
        <translation>Pap&amp;ier:</translation>
    </message>
    <message>
        <source>A4</source>
        <translation>A4</translation>
    </message>
    <message>
        <source>Letter</source>
        <translation>Letter</translation>
    </message>
    <message>
        <source>&amp;Drawing of the layout</source>
        <translation>&amp;Zeichnung der Anordnung</translation>
    </message>
    <message>
        <source>A table for each &amp;universe</source>
        <translation>Eine Tabelle je &amp;Universum</translation>
    </message>
    <message>
        <source>All e&amp;lements by number</source>
        <translation>Alle E&amp;lemente nach Nummer</translation>
    </message>
    <message>
        <source>Li&amp;nes:</source>
        <translation>Zeile&amp;n:</translation>
    </message>
    <message>
        <source>By element</source>
        <translation>Nach Element</translation>
    </message>
    <message>
        <source>By universe</source>
        <translation>Nach Universum</translation>
    </message>
</context>
<context>
    <name>PatchWords</name>
    <message>
        <source>%1, no channels</source>
        <translation>%1, keine Kanäle</translation>
    </message>
    <message>
        <source>%1, channel %2</source>
        <translation>%1, Kanal %2</translation>
    </message>
    <message>
        <source>%1, channels %2 to %3</source>
        <translation>%1, Kanäle %2 bis %3</translation>
    </message>
    <message>
        <source>%1, reaches beyond 512</source>
        <translation>%1, reicht über 512 hinaus</translation>
    </message>
    <message>
        <source>Reach beyond 512: %1</source>
        <translation>Über 512 hinaus reichen: %1</translation>
    </message>
    <message>
        <source>an element without description</source>
        <translation>ein Element ohne Beschreibung</translation>
    </message>
    <message>
        <source>Shares channels with: %1</source>
        <translation>Teilt Kanäle mit: %1</translation>
    </message>
    <message>
        <source>Shares channels with: %1 and %2 more</source>
        <translation>Teilt Kanäle mit: %1 und %2 weiteren</translation>
    </message>
</context>
<context>
    <name>PixelInspector</name>
    <message>
        <source>&quot;%1&quot; sends no pixel here</source>
        <translation>„%1“ sendet hier kein Pixel</translation>
    </message>
</context>
<context>
    <name>ProblemCounts</name>
    <message>
        <source>Faults: %1</source>
        <translation>Fehler: %1</translation>
    </message>
    <message>
        <source>Cautions: %1</source>
        <translation>Warnungen: %1</translation>
    </message>
    <message>
        <source>Hints: %1</source>
        <translation>Hinweise: %1</translation>
    </message>
</context>
<context>
    <name>ProblemsButton</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Nothing is wrong with the patch</source>
        <translation>Am Patch ist nichts falsch</translation>
    </message>
    <message>
        <source>What is wrong with the patch: %1</source>
        <translation>Was am Patch falsch ist: %1</translation>
    </message>
</context>
<context>
    <name>ProblemsModel</name>
    <message>
        <source>Severity</source>
        <translation>Schweregrad</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>Elements</source>
        <translation>Elemente</translation>
    </message>
    <message>
        <source>Universe</source>
        <translation>Universum</translation>
    </message>
    <message>
        <source>What it does</source>
        <translation>Auswirkung</translation>
    </message>
</context>
<context>
    <name>ProblemsPanel</name>
    <message>
        <source>They are larger than the canvas.</source>
        <translation>Sie sind größer als die Zeichenfläche.</translation>
    </message>
    <message>
        <source>No universe that they may be in has so many channels free.</source>
        <translation>Kein Universum, in dem sie liegen dürfen, hat so viele freie Kanäle.</translation>
    </message>
    <message>
        <source>Elements put right: %1, left as they are: %2. %3</source>
        <translation>Behobene Elemente: %1, unverändert: %2. %3</translation>
    </message>
    <message>
        <source>There was nothing to change.</source>
        <translation>Es gab nichts zu ändern.</translation>
    </message>
    <message>
        <source>&amp;Show Elements</source>
        <translation>Elemente mar&amp;kieren</translation>
    </message>
    <message>
        <source>Select the elements of the problem on the canvas</source>
        <translation>Die Elemente des Problems auf der Zeichenfläche auswählen</translation>
    </message>
    <message>
        <source>Problems of the patch</source>
        <translation>Probleme des Patchs</translation>
    </message>
    <message>
        <source>No problems</source>
        <translation>Keine Probleme</translation>
    </message>
    <message>
        <source>%1. The first %2 are listed.</source>
        <translation>%1. Die ersten %2 sind aufgelistet.</translation>
    </message>
</context>
<context>
    <name>QMessageBox</name>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Change Address</source>
        <translation>Adresse ändern</translation>
    </message>
    <message>
        <source>Change Description</source>
        <translation>Beschreibung ändern</translation>
    </message>
    <message>
        <source>Crop Canvas</source>
        <translation>Zeichenfläche zuschneiden</translation>
    </message>
    <message>
        <source>Canvas Size</source>
        <translation>Größe der Zeichenfläche</translation>
    </message>
    <message>
        <source>Align Left</source>
        <translation>Links ausrichten</translation>
    </message>
    <message>
        <source>Align Center</source>
        <translation>Zentriert ausrichten</translation>
    </message>
    <message>
        <source>Align Right</source>
        <translation>Rechts ausrichten</translation>
    </message>
    <message>
        <source>Align Top</source>
        <translation>Oben ausrichten</translation>
    </message>
    <message>
        <source>Align Middle</source>
        <translation>Mittig ausrichten</translation>
    </message>
    <message>
        <source>Align Bottom</source>
        <translation>Unten ausrichten</translation>
    </message>
    <message>
        <source>Move Fixture</source>
        <translation>Gerät verschieben</translation>
    </message>
    <message>
        <source>Resize Fixture</source>
        <translation>Gerätegröße ändern</translation>
    </message>
    <message>
        <source>Rotate Fixture</source>
        <translation>Gerät drehen</translation>
    </message>
    <message>
        <source>Flip Fixture</source>
        <translation>Gerät spiegeln</translation>
    </message>
    <message>
        <source>Distribute Horizontally</source>
        <translation>Horizontal verteilen</translation>
    </message>
    <message>
        <source>Distribute Vertically</source>
        <translation>Vertikal verteilen</translation>
    </message>
    <message>
        <source>Add Node</source>
        <translation>Node hinzufügen</translation>
    </message>
    <message>
        <source>Edit Node</source>
        <translation>Node bearbeiten</translation>
    </message>
    <message>
        <source>Delete Node</source>
        <translation>Node löschen</translation>
    </message>
    <message>
        <source>Remove Rectangle Fixture</source>
        <translation>Gerät entfernen</translation>
    </message>
    <message>
        <source>Map Device(s)</source>
        <translation>Geräte platzieren</translation>
    </message>
    <message>
        <source>Take Library Definition</source>
        <translation>Definition der Bibliothek übernehmen</translation>
    </message>
    <message>
        <source>Bring onto Canvas</source>
        <translation>Auf die Zeichenfläche holen</translation>
    </message>
    <message>
        <source>Enlarge to Pixels</source>
        <translation>Auf Pixelgröße vergrößern</translation>
    </message>
    <message>
        <source>Repatch</source>
        <translation>Umpatchen</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Ja</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Nein</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>QShortcut</name>
    <message>
        <source>Ctrl</source>
        <translation>Strg</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Umschalt</translation>
    </message>
    <message>
        <source>Backspace</source>
        <translation>Rücktaste</translation>
    </message>
    <message>
        <source>Return</source>
        <translation>Eingabe</translation>
    </message>
</context>
<context>
    <name>Repatch</name>
    <message>
        <source>No universe is left behind 15/15: keeps its address.</source>
        <translation>Hinter 15/15 gibt es kein Universum mehr: behält seine Adresse.</translation>
    </message>
    <message>
        <source>Reaches beyond channel 512: the rest is not sent.</source>
        <translation>Reicht über Kanal 512 hinaus: Der Rest wird nicht gesendet.</translation>
    </message>
    <message>
        <source>Shares channels with a fixture without description.</source>
        <translation>Teilt Kanäle mit einem Gerät ohne Beschreibung.</translation>
    </message>
    <message>
        <source>Shares channels with %1.</source>
        <translation>Teilt Kanäle mit %1.</translation>
    </message>
    <message>
        <source>The merger sends on universe %1.</source>
        <translation>Der Merger sendet auf Universum %1.</translation>
    </message>
    <message>
        <source>Universe %1 has fixtures with node Auto and others with a chosen node.</source>
        <translation>Universum %1 hat Geräte mit Node Auto und andere mit einem gewählten Node.</translation>
    </message>
</context>
<context>
    <name>RepatchDialog</name>
    <message>
        <source>Repatch</source>
        <translation>Umpatchen</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>Reihenfolge</translation>
    </message>
    <message>
        <source>&amp;Order:</source>
        <translation>&amp;Reihenfolge:</translation>
    </message>
    <message>
        <source>By place, row by row</source>
        <translation>Nach Lage, Zeile für Zeile</translation>
    </message>
    <message>
        <source>By place, column by column</source>
        <translation>Nach Lage, Spalte für Spalte</translation>
    </message>
    <message>
        <source>By present address</source>
        <translation>Nach jetziger Adresse</translation>
    </message>
    <message>
        <source>As in the list</source>
        <translation>Wie in der Liste</translation>
    </message>
    <message>
        <source>&amp;From:</source>
        <translation>&amp;Von:</translation>
    </message>
    <message>
        <source>Top left</source>
        <translation>Oben links</translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>Oben rechts</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>Unten links</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>Unten rechts</translation>
    </message>
    <message>
        <source>The cable goes on where it ends, and does not return to the side where it began.</source>
        <translation>Das Kabel geht dort weiter, wo es endet, und kehrt nicht auf die Seite zurück, auf der es begann.</translation>
    </message>
    <message>
        <source>Addresses</source>
        <translation>Adressen</translation>
    </message>
    <message>
        <source>&amp;Sub-Net:</source>
        <translation>&amp;Subnet:</translation>
    </message>
    <message>
        <source>&amp;Universe:</source>
        <translation>&amp;Universum:</translation>
    </message>
    <message>
        <source>D&amp;MX:</source>
        <translation>D&amp;MX:</translation>
    </message>
    <message>
        <source>&amp;Gap:</source>
        <translation>&amp;Lücke:</translation>
    </message>
    <message>
        <source>Channels that stay free between two fixtures</source>
        <translation>Kanäle, die zwischen zwei Geräten frei bleiben</translation>
    </message>
    <message>
        <source>Start &amp;Behind the Others</source>
        <translation>&amp;Hinter den anderen beginnen</translation>
    </message>
    <message>
        <source>Start at the first free address behind all fixtures that are not selected</source>
        <translation>Auf der ersten freien Adresse hinter allen Geräten beginnen, die nicht ausgewählt sind</translation>
    </message>
    <message>
        <source>&amp;Never split a pixel or a fixture</source>
        <translation>Pixel und Geräte &amp;nie teilen</translation>
    </message>
    <message>
        <source>A fixture is sent in one universe: what reaches beyond channel 512 is not sent.
On: a fixture that would reach beyond 512 begins the next universe.
Off: addresses run on over the end of a universe, as a controller counts that uses all 512 channels; the fixture on the end loses the channels beyond 512.</source>
        <translation>Die Daten eines Geräts werden in einem Universum gesendet: Was über Kanal 512 hinausreicht, wird nicht gesendet.
Ein: Ein Gerät, das über 512 hinausreichen würde, beginnt das nächste Universum.
Aus: Adressen laufen über das Ende eines Universums weiter, wie ein Controller zählt, der alle 512 Kanäle benutzt; das Gerät am Ende verliert die Kanäle hinter 512.</translation>
    </message>
    <message>
        <source>For a controller with an output for each row: each one begins at channel 1, and the rest of the universe before it stays free.</source>
        <translation>Für einen Controller mit einem Ausgang je Zeile: Jede beginnt auf Kanal 1, und der Rest des Universums davor bleibt frei.</translation>
    </message>
    <message>
        <source>Nod&amp;e:</source>
        <translation>Nod&amp;e:</translation>
    </message>
    <message>
        <source>New addresses</source>
        <translation>Neue Adressen</translation>
    </message>
    <message>
        <source>Next &amp;Problem</source>
        <translation>Nächstes &amp;Problem</translation>
    </message>
    <message>
        <source>As it is</source>
        <translation>Unverändert</translation>
    </message>
    <message>
        <source>Sna&amp;ke: every second column runs back</source>
        <translation>Schlan&amp;genlinie: jede zweite Spalte läuft zurück</translation>
    </message>
    <message>
        <source>Sna&amp;ke: every second row runs back</source>
        <translation>Schlan&amp;genlinie: jede zweite Zeile läuft zurück</translation>
    </message>
    <message>
        <source>Start each column on a new uni&amp;verse</source>
        <translation>Jede Spalte in einem neuen Universum &amp;beginnen</translation>
    </message>
    <message>
        <source>Start each row on a new uni&amp;verse</source>
        <translation>Jede Zeile in einem neuen Universum &amp;beginnen</translation>
    </message>
    <message>
        <source>Fixtures: %1</source>
        <translation>Geräte: %1</translation>
    </message>
    <message>
        <source>Universes: %1 (%2 to %3)</source>
        <translation>Universen: %1 (%2 bis %3)</translation>
    </message>
    <message>
        <source>Problems: %1</source>
        <translation>Probleme: %1</translation>
    </message>
</context>
<context>
    <name>RepatchTable</name>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>No.</source>
        <translation>Nr.</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Jetzt</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Node</source>
        <translation>Node</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
</context>
<context>
    <name>SaveResult</name>
    <message>
        <source>There is no space left on the disk.</source>
        <translation>Auf dem Datenträger ist kein Platz mehr.</translation>
    </message>
    <message>
        <source>You are not permitted to write there.</source>
        <translation>Sie haben keine Berechtigung, dort zu schreiben.</translation>
    </message>
    <message>
        <source>The disk is write-protected.</source>
        <translation>Der Datenträger ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>The folder is gone.</source>
        <translation>Der Ordner ist nicht mehr vorhanden.</translation>
    </message>
    <message>
        <source>There is a file where its folder should be.</source>
        <translation>Wo der Ordner sein sollte, liegt eine Datei.</translation>
    </message>
    <message>
        <source>There is a folder of this name.</source>
        <translation>Es gibt einen Ordner mit diesem Namen.</translation>
    </message>
    <message>
        <source>The file is larger than the disk takes.</source>
        <translation>Die Datei ist größer, als der Datenträger erlaubt.</translation>
    </message>
    <message>
        <source>The name is too long.</source>
        <translation>Der Name ist zu lang.</translation>
    </message>
    <message>
        <source>The disk reports a fault.</source>
        <translation>Der Datenträger meldet einen Fehler.</translation>
    </message>
</context>
<context>
    <name>SaveTroubleLabel</name>
    <message>
        <source>What is not saved</source>
        <translation>Was nicht gespeichert ist</translation>
    </message>
    <message>
        <source>Mapping not saved: %1</source>
        <translation>Mapping nicht gespeichert: %1</translation>
    </message>
    <message>
        <source>Unsaved changes not kept: %1</source>
        <translation>Nicht gespeicherte Änderungen nicht gesichert: %1</translation>
    </message>
    <message>
        <source>Fixture library not saved: %1</source>
        <translation>Gerätebibliothek nicht gespeichert: %1</translation>
    </message>
    <message>
        <source>Save again when it can be written, or export the mapping to another place.</source>
        <translation>Speichern Sie noch einmal, wenn geschrieben werden kann, oder exportieren Sie das Mapping an einen anderen Ort.</translation>
    </message>
</context>
<context>
    <name>SelectionModeButton</name>
    <message>
        <source>Output selection</source>
        <translation>Auswahl in der Ausgabe</translation>
    </message>
    <message>
        <source>On: the selected fixtures don&apos;t show the picture</source>
        <translation>Ein: Die ausgewählten Geräte zeigen nicht das Bild</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Pixel under the mouse</source>
        <translation>Pixel unter der Maus</translation>
    </message>
    <message>
        <source>Colour of the picture: red, green, blue</source>
        <translation>Farbe des Bildes: Rot, Grün, Blau</translation>
    </message>
    <message>
        <source>Left and top of the element</source>
        <translation>Linke und obere Kante des Elements</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>%1 × %2</source>
        <translation>%1 × %2</translation>
    </message>
    <message>
        <source>Angle</source>
        <translation>Winkel</translation>
    </message>
    <message>
        <source>%1°</source>
        <translation>%1°</translation>
    </message>
    <message>
        <source>Sub-net, universe and channel</source>
        <translation>Subnet, Universum und Kanal</translation>
    </message>
    <message>
        <source>Element</source>
        <translation>Element</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>Elements of the document</source>
        <translation>Elemente des Dokuments</translation>
    </message>
    <message numerus="yes">
        <source>%n element(s)</source>
        <translation>
            <numerusform>%n Element</numerusform>
            <numerusform>%n Elemente</numerusform>
        </translation>
    </message>
    <message>
        <source>Universes of the last frame</source>
        <translation>Universen des letzten Frames</translation>
    </message>
    <message numerus="yes">
        <source>%n universe(s)</source>
        <translation>
            <numerusform>%n Universum</numerusform>
            <numerusform>%n Universen</numerusform>
        </translation>
    </message>
    <message>
        <source>Frames sent a second, counted over two seconds</source>
        <translation>Gesendete Frames je Sekunde, über zwei Sekunden gezählt</translation>
    </message>
    <message>
        <source>%1 fps</source>
        <translation>%1 fps</translation>
    </message>
    <message>
        <source>New element</source>
        <translation>Neues Element</translation>
    </message>
    <message>
        <source>%1 selected</source>
        <translation>%1 ausgewählt</translation>
    </message>
    <message>
        <source>No network</source>
        <translation>Kein Netzwerk</translation>
    </message>
</context>
<context>
    <name>TrafficLamps</name>
    <message>
        <source>Art-Net In: </source>
        <translation>Art-Net-Eingang: </translation>
    </message>
    <message>
        <source>In Traffic</source>
        <translation>Eingehende Daten</translation>
    </message>
    <message>
        <source> Art-Net Out: </source>
        <translation> Art-Net-Ausgang: </translation>
    </message>
    <message>
        <source>Out Traffic</source>
        <translation>Ausgehende Daten</translation>
    </message>
    <message>
        <source> In Traffic</source>
        <translation> Eingehende Daten</translation>
    </message>
    <message>
        <source>No network: nothing is received</source>
        <translation>Kein Netzwerk: Nichts wird empfangen</translation>
    </message>
    <message>
        <source>%1 receives the DMX</source>
        <translation>%1 empfängt das DMX</translation>
    </message>
    <message>
        <source>The output is about to begin</source>
        <translation>Die Ausgabe beginnt gleich</translation>
    </message>
    <message>
        <source>Universes: %1 of %2, packets a second: %3</source>
        <translation>Universen: %1 von %2, Pakete je Sekunde: %3</translation>
    </message>
    <message>
        <source>The merger is off: what is received is not sent on</source>
        <translation>Der Merger ist aus: Empfangenes wird nicht weitergesendet</translation>
    </message>
    <message>
        <source>Nothing is heard: another program on this computer has the Art-Net port %1. End that program.</source>
        <translation>Nichts wird empfangen: Ein anderes Programm auf diesem Rechner hat den Art-Net-Port %1. Beenden Sie es.</translation>
    </message>
    <message>
        <source>Nothing is heard: %1</source>
        <translation>Nichts wird empfangen: %1</translation>
    </message>
    <message>
        <source>No error</source>
        <translation>Kein Fehler</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>Sub-net %1, universe %2: %3 counts, %4 is ignored</source>
        <translation>Subnet %1, Universum %2: %3 zählt, %4 bleibt unbeachtet</translation>
    </message>
    <message>
        <source>No network: nothing is sent</source>
        <translation>Kein Netzwerk: Nichts wird gesendet</translation>
    </message>
    <message>
        <source>Universes: %1, packets a second: %2</source>
        <translation>Universen: %1, Pakete je Sekunde: %2</translation>
    </message>
    <message>
        <source>Universes: %1, sent by %2</source>
        <translation>Universen: %1, gesendet von %2</translation>
    </message>
    <message>
        <source>%1 sends the DMX</source>
        <translation>%1 sendet das DMX</translation>
    </message>
    <message>
        <source>The adapter is not connected: nothing leaves. Look at its cable.</source>
        <translation>Der Adapter ist nicht verbunden: Nichts geht hinaus. Prüfen Sie sein Kabel.</translation>
    </message>
    <message>
        <source>Nothing leaves: no node that answers takes these universes</source>
        <translation>Nichts geht hinaus: Kein antwortender Node nimmt diese Universen</translation>
    </message>
    <message>
        <source>Packets that were too late and dropped: %1</source>
        <translation>Pakete, die zu spät kamen und verworfen wurden: %1</translation>
    </message>
    <message>
        <source>Last error: %1, at %2, packets so far: %3</source>
        <translation>Letzter Fehler: %1, um %2, Pakete bisher: %3</translation>
    </message>
</context>
<context>
    <name>UniverseRows</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Marked in Mapped Fixtures: %1</source>
        <translation>In „Platzierte Geräte“ markiert: %1</translation>
    </message>
    <message>
        <source>Marked in Mapped Fixtures: %1 and %2 more</source>
        <translation>In „Platzierte Geräte“ markiert: %1 und %2 weitere</translation>
    </message>
    <message>
        <source>received from %1</source>
        <translation>empfangen von %1</translation>
    </message>
    <message>
        <source>broadcast</source>
        <translation>Broadcast</translation>
    </message>
    <message>
        <source>nobody: no node announced this universe</source>
        <translation>niemand: Kein Node hat dieses Universum angekündigt</translation>
    </message>
    <message>
        <source>nobody: %1 is not in the network</source>
        <translation>niemand: %1 liegt nicht im Netzwerk</translation>
    </message>
    <message>
        <source>nobody from here: the media program sends by itself</source>
        <translation>niemand von hier: Das Medienprogramm sendet selbst</translation>
    </message>
    <message>
        <source>nobody yet: the Art-Net port is not ours</source>
        <translation>noch niemand: Der Art-Net-Port gehört uns nicht</translation>
    </message>
    <message>
        <source>nobody: no network is chosen, or it is not connected</source>
        <translation>niemand: Kein Netzwerk ist gewählt, oder es ist nicht verbunden</translation>
    </message>
</context>
<context>
    <name>UniverseTable</name>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>%1 of 512 channels</source>
        <translation>%1 von 512 Kanälen</translation>
    </message>
    <message>
        <source>Universe</source>
        <translation>Universum</translation>
    </message>
    <message>
        <source>Used</source>
        <translation>Belegt</translation>
    </message>
    <message>
        <source>Goes to</source>
        <translation>Geht an</translation>
    </message>
    <message>
        <source>fps</source>
        <translation>fps</translation>
    </message>
</context>
<context>
    <name>UniversesPanel</name>
    <message>
        <source>Universes</source>
        <translation>Universen</translation>
    </message>
    <message>
        <source>Go to channel</source>
        <translation>Zu Kanal gehen</translation>
    </message>
    <message>
        <source>Go to: 4/97</source>
        <translation>Kanal: 4/97</translation>
    </message>
    <message>
        <source>97 is a channel of this universe, 4/97 one of Port-Address 4, 0/4/97 one of sub-net 0, universe 4</source>
        <translation>97 ist ein Kanal dieses Universums, 4/97 einer der Port-Adresse 4, 0/4/97 einer von Subnet 0, Universum 4</translation>
    </message>
    <message>
        <source>Values in percent, or from 0 to 255</source>
        <translation>Werte in Prozent oder von 0 bis 255</translation>
    </message>
    <message>
        <source>Values in percent</source>
        <translation>Werte in Prozent</translation>
    </message>
    <message>
        <source>Nothing goes out: no element of the document has an address.</source>
        <translation>Nichts geht hinaus: Kein Element des Dokuments hat eine Adresse.</translation>
    </message>
    <message>
        <source>Universe %1: %2</source>
        <translation>Universum %1: %2</translation>
    </message>
    <message>
        <source>channel %1, value %2</source>
        <translation>Kanal %1, Wert %2</translation>
    </message>
    <message>
        <source>%1, received</source>
        <translation>%1, empfangen</translation>
    </message>
    <message>
        <source>%1, free</source>
        <translation>%1, frei</translation>
    </message>
    <message>
        <source>%1, %2 and another element</source>
        <translation>%1, %2 und ein anderes Element</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no channel: type 97, 4/97 or 0/4/97, channels 1 to 512.</source>
        <translation>„%1“ ist kein Kanal: Geben Sie 97, 4/97 oder 0/4/97 ein, Kanäle 1 bis 512.</translation>
    </message>
    <message>
        <source>Universe %1 is not in use.</source>
        <translation>Universum %1 ist nicht in Benutzung.</translation>
    </message>
    <message>
        <source>No universe is in use: patch an element first.</source>
        <translation>Kein Universum ist in Benutzung: Patchen Sie zuerst ein Element.</translation>
    </message>
</context>
<context>
    <name>VersionsDialog</name>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>and more</source>
        <translation>und weitere</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>and %1 more kinds</source>
        <translation>und %1 weitere Arten</translation>
    </message>
    <message>
        <source>Versions</source>
        <translation>Versionen</translation>
    </message>
    <message>
        <source>No version is kept yet. Each save keeps one, the last %1 of them, in %2.</source>
        <translation>Es gibt noch keine Version. Bei jedem Speichern wird eine aufbewahrt, die letzten %1, in %2.</translation>
    </message>
    <message>
        <source>Each save keeps a version, the last %1 of them. One that you take back replaces what is on the canvas, as an import does; the mapping file stays as it is until you save.</source>
        <translation>Jedes Speichern bewahrt eine Version auf, die letzten %1. Eine, die Sie zurückholen, ersetzt wie ein Import, was auf der Zeichenfläche liegt; die Mapping-Datei bleibt unverändert, bis Sie speichern.</translation>
    </message>
    <message>
        <source>Versions, the newest first</source>
        <translation>Versionen, die neueste zuerst</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Gespeichert</translation>
    </message>
    <message>
        <source>Elements</source>
        <translation>Elemente</translation>
    </message>
    <message>
        <source>Layout of the version</source>
        <translation>Anordnung der Version</translation>
    </message>
    <message>
        <source>Canvas:</source>
        <translation>Zeichenfläche:</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Netzwerk:</translation>
    </message>
    <message>
        <source>Universes:</source>
        <translation>Universen:</translation>
    </message>
    <message>
        <source>Fixtures:</source>
        <translation>Geräte:</translation>
    </message>
    <message>
        <source>&amp;Take Back</source>
        <translation>&amp;Zurückholen</translation>
    </message>
    <message>
        <source>can&apos;t be read</source>
        <translation>nicht lesbar</translation>
    </message>
    <message>
        <source>Reading...</source>
        <translation>Wird gelesen...</translation>
    </message>
    <message>
        <source>This version can&apos;t be read.</source>
        <translation>Diese Version kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>%1 x %2</source>
        <translation>%1 x %2</translation>
    </message>
</context>
<context>
    <name>WEFTAboutDialog</name>
    <message>
        <source>About Zentri PixelWeft</source>
        <translation>Über Zentri PixelWeft</translation>
    </message>
    <message>
        <source>Zentri PixelWeft</source>
        <translation>Zentri PixelWeft</translation>
    </message>
    <message>
        <source>Version %1 alpha</source>
        <translation>Version %1 Alpha</translation>
    </message>
    <message>
        <source>Copyright</source>
        <translation>Copyright</translation>
    </message>
    <message>
        <source>Team</source>
        <translation>Team</translation>
    </message>
</context>
<context>
    <name>WEFTCustomFixtureDialog</name>
    <message>
        <source>Edit LED Fixture</source>
        <translation>LED-Gerät bearbeiten</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
    <message>
        <source>All pixels need %1 channels, the fixture has %2</source>
        <translation>Alle Pixel brauchen %1 Kanäle, das Gerät hat %2</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Mapping this pixel would override channels defined with other pixels or constants. Do you want to proceed and override?</source>
        <translation>Dieses Pixel würde Kanäle überschreiben, die andere Pixel oder Konstanten haben. Möchten Sie fortfahren und sie überschreiben?</translation>
    </message>
    <message>
        <source>Mapping this pixel is not allowed because the channel limit would be reached.</source>
        <translation>Dieses Pixel kann nicht belegt werden, da die Kanalgrenze erreicht würde.</translation>
    </message>
    <message>
        <source>Do you want to remap this pixel to the channel %1?</source>
        <translation>Möchten Sie dieses Pixel auf den Kanal %1 umlegen?</translation>
    </message>
    <message>
        <source>Auto-Mapping</source>
        <translation>Auto-Mapping</translation>
    </message>
    <message>
        <source>Auto-patch not possible: the size of the fixture will overflow DMX universe.

Set a smaller width and/or height.</source>
        <translation>Auto-Patch nicht möglich: Das Gerät ist zu groß für ein DMX-Universum.

Verringern Sie Breite und/oder Höhe.</translation>
    </message>
    <message>
        <source>Fixture Not Saved</source>
        <translation>Gerät nicht gespeichert</translation>
    </message>
</context>
<context>
    <name>WEFTCustomFixtureSizeDialog</name>
    <message>
        <source>Create New Fixture</source>
        <translation>Neues Gerät erstellen</translation>
    </message>
    <message>
        <source>Modify Fixture Settings</source>
        <translation>Geräteeinstellungen ändern</translation>
    </message>
    <message>
        <source>&amp;Type:</source>
        <translation>&amp;Typ:</translation>
    </message>
    <message>
        <source>&amp;Width:</source>
        <translation>B&amp;reite:</translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation>Pixel</translation>
    </message>
    <message>
        <source>&amp;Height:</source>
        <translation>&amp;Höhe:</translation>
    </message>
    <message>
        <source>&amp;Channels:</source>
        <translation>&amp;Kanäle:</translation>
    </message>
    <message>
        <source>Custom &amp;Size</source>
        <translation>Eigene &amp;Größe</translation>
    </message>
    <message>
        <source>Create</source>
        <translation>Erstellen</translation>
    </message>
    <message>
        <source>Modify</source>
        <translation>Ändern</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Modifying fixture size will reset the current pixel mapping and eventually remove channels with constants. Do you want to continue anyway?</source>
        <translation>Eine andere Größe setzt das Pixel-Mapping zurück und entfernt vielleicht Kanäle mit Konstanten. Möchten Sie trotzdem fortfahren?</translation>
    </message>
    <message>
        <source>You are decreasing the Channel count and will lose any pixel or constant defined on those removed channels. Do you want to continue anyway?</source>
        <translation>Sie verringern die Zahl der Kanäle und verlieren alle Pixel und Konstanten auf den entfernten Kanälen. Möchten Sie trotzdem fortfahren?</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
</context>
<context>
    <name>WEFTDialogPreferences</name>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>PixelWeft Preferences</source>
        <translation>PixelWeft-Einstellungen</translation>
    </message>
    <message>
        <source>User interface</source>
        <translation>Bedienoberfläche</translation>
    </message>
    <message>
        <source>Draw grid on the canvas</source>
        <translation>Raster auf der Zeichenfläche zeichnen</translation>
    </message>
    <message>
        <source>Zoom follows cursor</source>
        <translation>Zoom folgt dem Mauszeiger</translation>
    </message>
    <message>
        <source>Zoom centers on selection</source>
        <translation>Zoom auf die Auswahl zentrieren</translation>
    </message>
    <message>
        <source>Snap fixtures to grid</source>
        <translation>Geräte am Raster einrasten</translation>
    </message>
    <message>
        <source>&amp;Language:</source>
        <translation>&amp;Sprache:</translation>
    </message>
    <message>
        <source>As the system</source>
        <translation>Wie das System</translation>
    </message>
    <message>
        <source>Fixtures</source>
        <translation>Geräte</translation>
    </message>
    <message>
        <source>Replace your local fixture library with the fixtures provided with this version of the software.</source>
        <translation>Ihre Gerätebibliothek durch die Geräte ersetzen, die mit dieser Version des Programms geliefert werden.</translation>
    </message>
    <message>
        <source>Restore Default Fixtures...</source>
        <translation>Mitgelieferte Geräte wiederherstellen...</translation>
    </message>
    <message>
        <source>Art-Net</source>
        <translation>Art-Net</translation>
    </message>
    <message>
        <source>Broadcast</source>
        <translation>Broadcast</translation>
    </message>
    <message>
        <source>Auto-Unicast (ArtPollReply)</source>
        <translation>Auto-Unicast (ArtPollReply)</translation>
    </message>
    <message>
        <source>Synchronise nodes (ArtSync)</source>
        <translation>Nodes synchronisieren (ArtSync)</translation>
    </message>
    <message>
        <source>Nodes that know ArtSync put a whole frame out together. For walls of several nodes that tear.</source>
        <translation>Nodes, die ArtSync kennen, geben einen ganzen Frame gemeinsam aus. Für Wände aus mehreren Nodes, deren Bild sonst zerreißt.</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Do you want to install the provided fixture library ? 
This will overwrite your local fixture definitions.</source>
        <translation>Möchten Sie die mitgelieferte Gerätebibliothek installieren?
Ihre eigenen Gerätedefinitionen werden überschrieben.</translation>
    </message>
</context>
<context>
    <name>WEFTMain</name>
    <message>
        <source>Canvas &amp;Size...</source>
        <translation>&amp;Größe der Zeichenfläche...</translation>
    </message>
    <message>
        <source>Adjust the canvas dimensions</source>
        <translation>Die Maße der Zeichenfläche ändern</translation>
    </message>
    <message>
        <source>&amp;Crop to selection</source>
        <translation>&amp;Auf Auswahl zuschneiden</translation>
    </message>
    <message>
        <source>Crop canvas to selected devices</source>
        <translation>Zeichenfläche auf die ausgewählten Geräte zuschneiden</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Delete device from the mapping canvas</source>
        <translation>Gerät von der Zeichenfläche löschen</translation>
    </message>
    <message>
        <source>Align &amp;Left</source>
        <translation>&amp;Links ausrichten</translation>
    </message>
    <message>
        <source>Align &amp;Center</source>
        <translation>&amp;Zentriert ausrichten</translation>
    </message>
    <message>
        <source>Align &amp;Right</source>
        <translation>&amp;Rechts ausrichten</translation>
    </message>
    <message>
        <source>Align &amp;Top</source>
        <translation>&amp;Oben ausrichten</translation>
    </message>
    <message>
        <source>Align &amp;Middle</source>
        <translation>&amp;Mittig ausrichten</translation>
    </message>
    <message>
        <source>Align &amp;Bottom</source>
        <translation>&amp;Unten ausrichten</translation>
    </message>
    <message>
        <source>Distribute &amp;Horizontally</source>
        <translation>&amp;Horizontal verteilen</translation>
    </message>
    <message>
        <source>Distribute &amp;Vertically</source>
        <translation>&amp;Vertikal verteilen</translation>
    </message>
    <message>
        <source>A&amp;lign</source>
        <translation>Ausri&amp;chten</translation>
    </message>
    <message>
        <source>Ro&amp;tate</source>
        <translation>Drehe&amp;n</translation>
    </message>
    <message>
        <source>Rotate &amp;Right 90°</source>
        <translation>90° nach &amp;rechts drehen</translation>
    </message>
    <message>
        <source>Rotate &amp;Left 90°</source>
        <translation>90° nach &amp;links drehen</translation>
    </message>
    <message>
        <source>Duplicate Ele&amp;ment...</source>
        <translation>Element &amp;duplizieren...</translation>
    </message>
    <message>
        <source>Duplicate element to create a wall.</source>
        <translation>Element duplizieren, um eine Wand zu bauen.</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy selected element(s)</source>
        <translation>Ausgewählte Elemente kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste element(s)</source>
        <translation>Element(e) e&amp;infügen</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>&amp;Rückgängig: %1</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>&amp;Wiederherstellen: %1</translation>
    </message>
    <message>
        <source>&amp;Identify</source>
        <translation>&amp;Identifizieren</translation>
    </message>
    <message>
        <source>Light one fixture after the other on the stage</source>
        <translation>Ein Gerät nach dem anderen auf der Bühne leuchten lassen</translation>
    </message>
    <message>
        <source>&amp;Inspector</source>
        <translation>&amp;Inspektor</translation>
    </message>
    <message>
        <source>Show the inspector</source>
        <translation>Den Inspektor zeigen</translation>
    </message>
    <message>
        <source>Edit Pr&amp;operties</source>
        <translation>Ei&amp;genschaften bearbeiten</translation>
    </message>
    <message>
        <source>Go to the inspector</source>
        <translation>Zum Inspektor gehen</translation>
    </message>
    <message>
        <source>Edit De&amp;scription</source>
        <translation>&amp;Beschreibung bearbeiten</translation>
    </message>
    <message>
        <source>Go to the description</source>
        <translation>Zur Beschreibung gehen</translation>
    </message>
    <message>
        <source>Fixture Library</source>
        <translation>Gerätebibliothek</translation>
    </message>
    <message>
        <source>Import &amp;Fixtures...</source>
        <translation>&amp;Geräte importieren...</translation>
    </message>
    <message>
        <source>New...</source>
        <translation>Neu...</translation>
    </message>
    <message>
        <source>Edit...</source>
        <translation>Bearbeiten...</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Canvas</source>
        <translation>&amp;Zeichenfläche</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Fit</source>
        <translation>&amp;Einpassen</translation>
    </message>
    <message>
        <source>Show the whole canvas, at 100%</source>
        <translation>Die ganze Zeichenfläche zeigen, bei 100%</translation>
    </message>
    <message>
        <source>Fit &amp;Selection</source>
        <translation>&amp;Auswahl einpassen</translation>
    </message>
    <message>
        <source>Show what is selected, as large as it goes</source>
        <translation>Die Auswahl so groß wie möglich zeigen</translation>
    </message>
    <message>
        <source>&amp;1:1</source>
        <translation>&amp;1:1</translation>
    </message>
    <message>
        <source>Show a canvas pixel on each screen pixel</source>
        <translation>Ein Pixel der Zeichenfläche auf jedem Bildschirmpixel zeigen</translation>
    </message>
    <message>
        <source>&amp;Zoom In</source>
        <translation>Ver&amp;größern</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Display Pixel &amp;Grid</source>
        <translation>Pixel&amp;raster anzeigen</translation>
    </message>
    <message>
        <source>Display pixel grid</source>
        <translation>Pixelraster anzeigen</translation>
    </message>
    <message>
        <source>S&amp;napToGrid</source>
        <translation>Am Raster &amp;einrasten</translation>
    </message>
    <message>
        <source>Snap fixtures to the grid</source>
        <translation>Geräte am Raster einrasten</translation>
    </message>
    <message>
        <source>&amp;New...</source>
        <translation>&amp;Neu...</translation>
    </message>
    <message>
        <source>Creates an empty canvas</source>
        <translation>Legt eine leere Zeichenfläche an</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save mapping to current file</source>
        <translation>Das Mapping in seiner Datei speichern</translation>
    </message>
    <message>
        <source>&amp;Import...</source>
        <translation>&amp;Importieren...</translation>
    </message>
    <message>
        <source>Open an existing mapping file </source>
        <translation>Eine Mapping-Datei öffnen </translation>
    </message>
    <message>
        <source>&amp;Export...</source>
        <translation>&amp;Exportieren...</translation>
    </message>
    <message>
        <source>Save mapping to a mapping file </source>
        <translation>Das Mapping in eine Mapping-Datei schreiben </translation>
    </message>
    <message>
        <source>&amp;Versions...</source>
        <translation>&amp;Versionen...</translation>
    </message>
    <message>
        <source>Take back a saved version</source>
        <translation>Eine gespeicherte Version zurückholen</translation>
    </message>
    <message>
        <source>Mapped Fixtures</source>
        <translation>Platzierte Geräte</translation>
    </message>
    <message>
        <source>Toolbar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>&amp;Toolbar</source>
        <translation>&amp;Werkzeugleiste</translation>
    </message>
    <message>
        <source>Problems</source>
        <translation>Probleme</translation>
    </message>
    <message>
        <source>&amp;Problems</source>
        <translation>Pr&amp;obleme</translation>
    </message>
    <message>
        <source>Universes</source>
        <translation>Universen</translation>
    </message>
    <message>
        <source>&amp;Universes</source>
        <translation>&amp;Universen</translation>
    </message>
    <message>
        <source>&amp;No Output Selection</source>
        <translation>&amp;Keine Auswahl in der Ausgabe</translation>
    </message>
    <message>
        <source>No color selection notification on the device output itself.</source>
        <translation>Ausgewählte Geräte zeigen in der Ausgabe das Bild.</translation>
    </message>
    <message>
        <source>&amp;Solid Color Output Selection</source>
        <translation>Auswahl &amp;einfarbig ausgeben</translation>
    </message>
    <message>
        <source>Solid color selection notification on the device output itself. </source>
        <translation>Ausgewählte Geräte zeigen in der Ausgabe eine feste Farbe. </translation>
    </message>
    <message>
        <source>&amp;Flashing Output Selection</source>
        <translation>Auswahl &amp;blinkend ausgeben</translation>
    </message>
    <message>
        <source>Flashing animated color selection notification on the device output itself.</source>
        <translation>Ausgewählte Geräte blinken in der Ausgabe in einer Farbe.</translation>
    </message>
    <message>
        <source>%1 Library Not Found</source>
        <translation>%1-Bibliothek nicht gefunden</translation>
    </message>
    <message>
        <source>PixelWeft requires that %1 has an active Library before starting, please choose a working directory</source>
        <translation>PixelWeft braucht eine aktive Bibliothek von %1, um zu starten. Wählen Sie einen Arbeitsordner</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Wählen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>working directory</source>
        <translation>Arbeitsordner</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>Command List</source>
        <translation>Befehlsliste</translation>
    </message>
    <message>
        <source>Fixture &amp;Library</source>
        <translation>Geräte&amp;bibliothek</translation>
    </message>
    <message>
        <source>&amp;Mapped Fixtures</source>
        <translation>&amp;Platzierte Geräte</translation>
    </message>
    <message>
        <source>Fixture Nodes</source>
        <translation>Art-Net-Nodes</translation>
    </message>
    <message>
        <source>Fixture &amp;Nodes</source>
        <translation>Art-Net-&amp;Nodes</translation>
    </message>
    <message>
        <source>&amp;Preferences...</source>
        <translation>Einste&amp;llungen...</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Reset Layout</source>
        <translation>&amp;Layout zurücksetzen</translation>
    </message>
    <message>
        <source>Ni&amp;ght Look</source>
        <translation>Na&amp;chtansicht</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;Über</translation>
    </message>
    <message>
        <source>No version of this mapping can be kept in %1: can the folder be written to, and has the disk room?</source>
        <translation>In %1 kann keine Version dieses Mappings aufbewahrt werden: Ist der Ordner beschreibbar, und hat der Datenträger Platz?</translation>
    </message>
    <message>
        <source>The patch was exported to %1</source>
        <translation>Der Patch wurde nach %1 exportiert</translation>
    </message>
    <message>
        <source>saved</source>
        <translation>gespeichert</translation>
    </message>
    <message>
        <source>unsaved</source>
        <translation>nicht gespeichert</translation>
    </message>
    <message>
        <source>Export...</source>
        <translation>Exportieren...</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>DMX Output Not Started</source>
        <translation>DMX-Ausgabe nicht gestartet</translation>
    </message>
    <message>
        <source>The DMX output engine could not be initialised. Is there another instance running?</source>
        <translation>Die DMX-Ausgabe konnte nicht gestartet werden. Läuft das Programm schon?</translation>
    </message>
    <message>
        <source>Export Patc&amp;h...</source>
        <translation>&amp;Patch exportieren...</translation>
    </message>
    <message>
        <source>Write the patch for the crew: on paper (PDF) or as a table (CSV)</source>
        <translation>Den Patch für die Crew schreiben: auf Papier (PDF) oder als Tabelle (CSV)</translation>
    </message>
    <message>
        <source>R&amp;epatch...</source>
        <translation>&amp;Umpatchen...</translation>
    </message>
    <message>
        <source>Give the selected fixtures new addresses</source>
        <translation>Den ausgewählten Geräten neue Adressen geben</translation>
    </message>
    <message>
        <source>Choose &amp;Test Image...</source>
        <translation>&amp;Testbild wählen...</translation>
    </message>
    <message>
        <source>Choose test image</source>
        <translation>Testbild wählen</translation>
    </message>
    <message>
        <source>Choose Test Image &amp;Directory...</source>
        <translation>Testbild&amp;ordner wählen...</translation>
    </message>
    <message>
        <source>Choose test image directory</source>
        <translation>Testbildordner wählen</translation>
    </message>
    <message>
        <source>No test image can be read in %1: is its disk connected?</source>
        <translation>In %1 kann kein Testbild gelesen werden: Ist der Datenträger verbunden?</translation>
    </message>
    <message>
        <source>Open Test Image</source>
        <translation>Testbild öffnen</translation>
    </message>
    <message>
        <source>Image Files (%1)</source>
        <translation>Bilddateien (%1)</translation>
    </message>
    <message>
        <source>The picture %1 can&apos;t be read: %2.</source>
        <translation>Das Bild %1 kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>Choose Test Image Directory</source>
        <translation>Testbildordner wählen</translation>
    </message>
    <message>
        <source>The folder %1 has no picture that can be read.</source>
        <translation>Der Ordner %1 hat kein lesbares Bild.</translation>
    </message>
    <message>
        <source>Test Image Not Read</source>
        <translation>Testbild nicht gelesen</translation>
    </message>
    <message>
        <source>%1

The test image stays the one before.</source>
        <translation>%1

Das bisherige Testbild bleibt.</translation>
    </message>
    <message>
        <source>Import Fixture Fo&amp;lder...</source>
        <translation>Geräteor&amp;dner importieren...</translation>
    </message>
    <message>
        <source>Export Fixt&amp;ures...</source>
        <translation>Geräte e&amp;xportieren...</translation>
    </message>
    <message>
        <source>Write the selected fixtures of the library, or all of them, to a file of their own</source>
        <translation>Die ausgewählten Geräte der Bibliothek oder alle in eine eigene Datei schreiben</translation>
    </message>
</context>
<context>
    <name>WeftMapEditorScene</name>
    <message>
        <source>Flip &amp;Horizontal</source>
        <translation>&amp;Horizontal spiegeln</translation>
    </message>
    <message>
        <source>Flip &amp;Vertical</source>
        <translation>&amp;Vertikal spiegeln</translation>
    </message>
</context>
<context>
    <name>WeftMapEditorView</name>
    <message>
        <source>Canvas</source>
        <translation>Zeichenfläche</translation>
    </message>
    <message>
        <source>Previous test image</source>
        <translation>Voriges Testbild</translation>
    </message>
    <message>
        <source>Next test image</source>
        <translation>Nächstes Testbild</translation>
    </message>
</context>
<context>
    <name>XmlFault</name>
    <message>
        <source>There is no such file.</source>
        <translation>Es gibt keine solche Datei.</translation>
    </message>
    <message>
        <source>It is a folder or a device, and no file.</source>
        <translation>Es ist ein Ordner oder ein Gerät und keine Datei.</translation>
    </message>
    <message>
        <source>You are not permitted to read it.</source>
        <translation>Sie haben keine Berechtigung, sie zu lesen.</translation>
    </message>
    <message>
        <source>It is larger than any file of PixelWeft.</source>
        <translation>Sie ist größer als jede Datei von PixelWeft.</translation>
    </message>
    <message>
        <source>The disk can&apos;t read it.</source>
        <translation>Der Datenträger kann sie nicht lesen.</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>Die Datei ist leer.</translation>
    </message>
    <message>
        <source>It is no file of PixelWeft.</source>
        <translation>Es ist keine Datei von PixelWeft.</translation>
    </message>
    <message>
        <source>The file is cut off or damaged.</source>
        <translation>Die Datei ist abgeschnitten oder beschädigt.</translation>
    </message>
</context>
<context>
    <name>ZenPixelMap</name>
    <message>
        <source>Arrow keys move, Space maps a pixel, Delete clears it</source>
        <translation>Pfeiltasten bewegen, Leertaste belegt ein Pixel, Entf löscht es</translation>
    </message>
</context>
</TS>
