<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Quirebind</name>
    <message>
        <source>Quirebind</source>
        <translation>Quirebind</translation>
    </message>
    <message>
        <source>Bring your pages together.</source>
        <translation>Bringen Sie Ihre Seiten zusammen.</translation>
    </message>
    <message>
        <source>Add PDFs…</source>
        <translation>PDFs hinzufügen…</translation>
    </message>
    <message>
        <source>YOUR DOCUMENTS</source>
        <translation>IHRE DOKUMENTE</translation>
    </message>
    <message>
        <source>%lld</source>
        <translation>%lld</translation>
    </message>
    <message numerus="yes">
        <source>%lld pages</source>
        <translation>
            <numerusform>%lld Seite</numerusform>
            <numerusform>%lld Seiten</numerusform>
        </translation>
    </message>
    <message>
        <source>Up</source>
        <extracomment>Moves the selected document one place up in the list.</extracomment>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Down</source>
        <extracomment>Moves the selected document one place down in the list.</extracomment>
        <translation>Nach unten</translation>
    </message>
    <message>
        <source>Remove</source>
        <extracomment>Takes the selected document off the list; its file stays where it is.</extracomment>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Drop your PDFs here</source>
        <translation>PDFs hier ablegen</translation>
    </message>
    <message>
        <source>Add two or more documents, arrange them, then merge.</source>
        <translation>Fügen Sie zwei oder mehr Dokumente hinzu, ordnen Sie sie an und führen Sie sie zusammen.</translation>
    </message>
    <message>
        <source>A little preview</source>
        <translation>Eine kleine Vorschau</translation>
    </message>
    <message>
        <source>Select a document to inspect its pages.</source>
        <translation>Wählen Sie ein Dokument aus, um seine Seiten anzusehen.</translation>
    </message>
    <message>
        <source>%lld documents · %lld pages</source>
        <extracomment>Either number may be one, so say it in a way that holds for every number, as in &quot;Documents: %lld&quot;. The first number is always the documents&apos;.</extracomment>
        <translation>Dokumente: %lld · Seiten: %lld</translation>
    </message>
    <message>
        <source>Processed privately on your Mac</source>
        <extracomment>Say &quot;computer&quot; in the place of &quot;Mac&quot;.</extracomment>
        <translation>Vertraulich auf Ihrem Rechner verarbeitet</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <extracomment>Say &quot;file manager&quot; in the place of &quot;Finder&quot;.</extracomment>
        <translation>In Dateiverwaltung anzeigen</translation>
    </message>
    <message>
        <source>Merge PDFs…</source>
        <translation>PDFs zusammenführen…</translation>
    </message>
    <message>
        <source>Merging…</source>
        <extracomment>On the button, while the merge runs.</extracomment>
        <translation>Wird zusammengeführt…</translation>
    </message>
    <message>
        <source>Quirebind couldn’t finish</source>
        <extracomment>The title of the alert; below it stands what went wrong.</extracomment>
        <translation>Quirebind konnte den Vorgang nicht abschließen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Fit Width</source>
        <translation>An Breite anpassen</translation>
    </message>
    <message>
        <source>Page %lld of %lld</source>
        <extracomment>The first number is always the page&apos;s, the second that of all pages.</extracomment>
        <translation>Seite %lld von %lld</translation>
    </message>
    <message>
        <source>Divider between the documents and the preview</source>
        <extracomment>What a screen reader calls the line that makes one side wider, the other narrower.</extracomment>
        <translation>Trenner zwischen den Dokumenten und der Vorschau</translation>
    </message>
    <message>
        <source>The merge is still running</source>
        <extracomment>Said where a window is to be closed during a merge.</extracomment>
        <translation>Das Zusammenführen läuft noch</translation>
    </message>
    <message>
        <source>This window closes as soon as the new file is written.</source>
        <translation>Dieses Fenster schließt sich, sobald die neue Datei geschrieben ist.</translation>
    </message>
    <message>
        <source>Keep Window Open</source>
        <translation>Fenster offen lassen</translation>
    </message>
</context>
</TS>
