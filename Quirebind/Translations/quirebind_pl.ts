<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pl" sourcelanguage="en">
<context>
    <name>Quirebind</name>
    <message>
        <source>Quirebind</source>
        <translation>Quirebind</translation>
    </message>
    <message>
        <source>Bring your pages together.</source>
        <translation>Zbierz swoje strony w całość.</translation>
    </message>
    <message>
        <source>Add PDFs…</source>
        <translation>Dodaj pliki PDF…</translation>
    </message>
    <message>
        <source>YOUR DOCUMENTS</source>
        <translation>TWOJE DOKUMENTY</translation>
    </message>
    <message>
        <source>%lld</source>
        <translation>%lld</translation>
    </message>
    <message numerus="yes">
        <source>%lld pages</source>
        <translation>
            <numerusform>%lld strona</numerusform>
            <numerusform>%lld strony</numerusform>
            <numerusform>%lld stron</numerusform>
        </translation>
    </message>
    <message>
        <source>Up</source>
        <extracomment>Moves the selected document one place up in the list.</extracomment>
        <translation>W górę</translation>
    </message>
    <message>
        <source>Down</source>
        <extracomment>Moves the selected document one place down in the list.</extracomment>
        <translation>W dół</translation>
    </message>
    <message>
        <source>Remove</source>
        <extracomment>Takes the selected document off the list; its file stays where it is.</extracomment>
        <translation>Usuń</translation>
    </message>
    <message>
        <source>Drop your PDFs here</source>
        <translation>Upuść pliki PDF tutaj</translation>
    </message>
    <message>
        <source>Add two or more documents, arrange them, then merge.</source>
        <translation>Dodaj co najmniej dwa dokumenty, ułóż je, a następnie połącz.</translation>
    </message>
    <message>
        <source>A little preview</source>
        <translation>Mały podgląd</translation>
    </message>
    <message>
        <source>Select a document to inspect its pages.</source>
        <translation>Zaznacz dokument, aby obejrzeć jego strony.</translation>
    </message>
    <message>
        <source>%lld documents · %lld pages</source>
        <extracomment>Either number may be one, so say it in a way that holds for every number, as in &quot;Documents: %lld&quot;. The first number is always the documents&apos;.</extracomment>
        <translation>Dokumenty: %lld · Strony: %lld</translation>
    </message>
    <message>
        <source>Processed privately on your Mac</source>
        <extracomment>Say &quot;computer&quot; in the place of &quot;Mac&quot;.</extracomment>
        <translation>Przetwarzane prywatnie na tym komputerze</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <extracomment>Say &quot;file manager&quot; in the place of &quot;Finder&quot;.</extracomment>
        <translation>Pokaż w menedżerze plików</translation>
    </message>
    <message>
        <source>Merge PDFs…</source>
        <translation>Połącz pliki PDF…</translation>
    </message>
    <message>
        <source>Merging…</source>
        <extracomment>On the button, while the merge runs.</extracomment>
        <translation>Łączenie…</translation>
    </message>
    <message>
        <source>Quirebind couldn’t finish</source>
        <extracomment>The title of the alert; below it stands what went wrong.</extracomment>
        <translation>Quirebind nie może dokończyć działania</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopiuj</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Powiększ</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Pomniejsz</translation>
    </message>
    <message>
        <source>Fit Width</source>
        <translation>Dopasuj do szerokości</translation>
    </message>
    <message>
        <source>Page %lld of %lld</source>
        <extracomment>The first number is always the page&apos;s, the second that of all pages.</extracomment>
        <translation>Strona %lld z %lld</translation>
    </message>
    <message>
        <source>Divider between the documents and the preview</source>
        <extracomment>What a screen reader calls the line that makes one side wider, the other narrower.</extracomment>
        <translation>Linia podziału między dokumentami a podglądem</translation>
    </message>
    <message>
        <source>The merge is still running</source>
        <extracomment>Said where a window is to be closed during a merge.</extracomment>
        <translation>Łączenie jeszcze trwa</translation>
    </message>
    <message>
        <source>This window closes as soon as the new file is written.</source>
        <translation>To okno zamknie się, gdy tylko nowy plik zostanie zapisany.</translation>
    </message>
    <message>
        <source>Keep Window Open</source>
        <translation>Pozostaw okno otwarte</translation>
    </message>
</context>
</TS>
