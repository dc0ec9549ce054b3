<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it" sourcelanguage="en">
<context>
    <name>Quirebind</name>
    <message>
        <source>Quirebind</source>
        <translation>Quirebind</translation>
    </message>
    <message>
        <source>Bring your pages together.</source>
        <translation>Riunisci le tue pagine.</translation>
    </message>
    <message>
        <source>Add PDFs…</source>
        <translation>Aggiungi PDF…</translation>
    </message>
    <message>
        <source>YOUR DOCUMENTS</source>
        <translation>I TUOI DOCUMENTI</translation>
    </message>
    <message>
        <source>%lld</source>
        <translation>%lld</translation>
    </message>
    <message numerus="yes">
        <source>%lld pages</source>
        <translation>
            <numerusform>%lld pagina</numerusform>
            <numerusform>%lld pagine</numerusform>
        </translation>
    </message>
    <message>
        <source>Up</source>
        <extracomment>Moves the selected document one place up in the list.</extracomment>
        <translation>Su</translation>
    </message>
    <message>
        <source>Down</source>
        <extracomment>Moves the selected document one place down in the list.</extracomment>
        <translation>Giù</translation>
    </message>
    <message>
        <source>Remove</source>
        <extracomment>Takes the selected document off the list; its file stays where it is.</extracomment>
        <translation>Rimuovi</translation>
    </message>
    <message>
        <source>Drop your PDFs here</source>
        <translation>Rilascia qui i tuoi PDF</translation>
    </message>
    <message>
        <source>Add two or more documents, arrange them, then merge.</source>
        <translation>Aggiungi due o più documenti, disponili nell’ordine voluto e uniscili.</translation>
    </message>
    <message>
        <source>A little preview</source>
        <translation>Una piccola anteprima</translation>
    </message>
    <message>
        <source>Select a document to inspect its pages.</source>
        <translation>Seleziona un documento per esaminarne le pagine.</translation>
    </message>
    <message>
        <source>%lld documents · %lld pages</source>
        <extracomment>Either number may be one, so say it in a way that holds for every number, as in &quot;Documents: %lld&quot;. The first number is always the documents&apos;.</extracomment>
        <translation>Documenti: %lld · Pagine: %lld</translation>
    </message>
    <message>
        <source>Processed privately on your Mac</source>
        <extracomment>Say &quot;computer&quot; in the place of &quot;Mac&quot;.</extracomment>
        <translation>Elaborato in privato sul tuo computer</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <extracomment>Say &quot;file manager&quot; in the place of &quot;Finder&quot;.</extracomment>
        <translation>Mostra nel gestore dei file</translation>
    </message>
    <message>
        <source>Merge PDFs…</source>
        <translation>Unisci PDF…</translation>
    </message>
    <message>
        <source>Merging…</source>
        <extracomment>On the button, while the merge runs.</extracomment>
        <translation>Unione in corso…</translation>
    </message>
    <message>
        <source>Quirebind couldn’t finish</source>
        <extracomment>The title of the alert; below it stands what went wrong.</extracomment>
        <translation>Quirebind non è riuscito a terminare</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copia</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Ingrandisci</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Riduci</translation>
    </message>
    <message>
        <source>Fit Width</source>
        <translation>Adatta alla larghezza</translation>
    </message>
    <message>
        <source>Page %lld of %lld</source>
        <extracomment>The first number is always the page&apos;s, the second that of all pages.</extracomment>
        <translation>Pagina %lld di %lld</translation>
    </message>
    <message>
        <source>Divider between the documents and the preview</source>
        <extracomment>What a screen reader calls the line that makes one side wider, the other narrower.</extracomment>
        <translation>Divisore tra i documenti e l’anteprima</translation>
    </message>
    <message>
        <source>The merge is still running</source>
        <extracomment>Said where a window is to be closed during a merge.</extracomment>
        <translation>L’unione è ancora in corso</translation>
    </message>
    <message>
        <source>This window closes as soon as the new file is written.</source>
        <translation>Questa finestra si chiuderà non appena il nuovo file sarà stato scritto.</translation>
    </message>
    <message>
        <source>Keep Window Open</source>
        <translation>Mantieni aperta la finestra</translation>
    </message>
</context>
</TS>
