<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="nl" sourcelanguage="en">
<context>
    <name>Quirebind</name>
    <message>
        <source>Quirebind</source>
        <translation>Quirebind</translation>
    </message>
    <message>
        <source>Bring your pages together.</source>
        <translation>Breng uw pagina’s bij elkaar.</translation>
    </message>
    <message>
        <source>Add PDFs…</source>
        <translation>Pdf’s toevoegen…</translation>
    </message>
    <message>
        <source>YOUR DOCUMENTS</source>
        <translation>UW DOCUMENTEN</translation>
    </message>
    <message>
        <source>%lld</source>
        <translation>%lld</translation>
    </message>
    <message numerus="yes">
        <source>%lld pages</source>
        <translation>
            <numerusform>%lld pagina</numerusform>
            <numerusform>%lld pagina’s</numerusform>
        </translation>
    </message>
    <message>
        <source>Up</source>
        <extracomment>Moves the selected document one place up in the list.</extracomment>
        <translation>Omhoog</translation>
    </message>
    <message>
        <source>Down</source>
        <extracomment>Moves the selected document one place down in the list.</extracomment>
        <translation>Omlaag</translation>
    </message>
    <message>
        <source>Remove</source>
        <extracomment>Takes the selected document off the list; its file stays where it is.</extracomment>
        <translation>Verwijderen</translation>
    </message>
    <message>
        <source>Drop your PDFs here</source>
        <translation>Sleep uw pdf’s hierheen</translation>
    </message>
    <message>
        <source>Add two or more documents, arrange them, then merge.</source>
        <translation>Voeg twee of meer documenten toe, zet ze op volgorde en voeg ze samen.</translation>
    </message>
    <message>
        <source>A little preview</source>
        <translation>Een klein voorbeeld</translation>
    </message>
    <message>
        <source>Select a document to inspect its pages.</source>
        <translation>Selecteer een document om de pagina’s te bekijken.</translation>
    </message>
    <message>
        <source>%lld documents · %lld pages</source>
        <extracomment>Either number may be one, so say it in a way that holds for every number, as in &quot;Documents: %lld&quot;. The first number is always the documents&apos;.</extracomment>
        <translation>Documenten: %lld · Pagina’s: %lld</translation>
    </message>
    <message>
        <source>Processed privately on your Mac</source>
        <extracomment>Say &quot;computer&quot; in the place of &quot;Mac&quot;.</extracomment>
        <translation>Vertrouwelijk verwerkt op uw computer</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <extracomment>Say &quot;file manager&quot; in the place of &quot;Finder&quot;.</extracomment>
        <translation>Tonen in bestandsbeheer</translation>
    </message>
    <message>
        <source>Merge PDFs…</source>
        <translation>Pdf’s samenvoegen…</translation>
    </message>
    <message>
        <source>Merging…</source>
        <extracomment>On the button, while the merge runs.</extracomment>
        <translation>Bezig met samenvoegen…</translation>
    </message>
    <message>
        <source>Quirebind couldn’t finish</source>
        <extracomment>The title of the alert; below it stands what went wrong.</extracomment>
        <translation>Quirebind kon de bewerking niet voltooien</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopiëren</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Inzoomen</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Uitzoomen</translation>
    </message>
    <message>
        <source>Fit Width</source>
        <translation>Aanpassen aan breedte</translation>
    </message>
    <message>
        <source>Page %lld of %lld</source>
        <extracomment>The first number is always the page&apos;s, the second that of all pages.</extracomment>
        <translation>Pagina %lld van %lld</translation>
    </message>
    <message>
        <source>Divider between the documents and the preview</source>
        <extracomment>What a screen reader calls the line that makes one side wider, the other narrower.</extracomment>
        <translation>Scheiding tussen de documenten en het voorbeeld</translation>
    </message>
    <message>
        <source>The merge is still running</source>
        <extracomment>Said where a window is to be closed during a merge.</extracomment>
        <translation>Het samenvoegen is nog bezig</translation>
    </message>
    <message>
        <source>This window closes as soon as the new file is written.</source>
        <translation>Dit venster sluit zodra het nieuwe bestand is geschreven.</translation>
    </message>
    <message>
        <source>Keep Window Open</source>
        <translation>Venster openhouden</translation>
    </message>
</context>
</TS>
