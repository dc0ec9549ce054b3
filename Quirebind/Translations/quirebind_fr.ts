<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>Quirebind</name>
    <message>
        <source>Quirebind</source>
        <translation>Quirebind</translation>
    </message>
    <message>
        <source>Bring your pages together.</source>
        <translation>Rassemblez vos pages.</translation>
    </message>
    <message>
        <source>Add PDFs…</source>
        <translation>Ajouter des PDF…</translation>
    </message>
    <message>
        <source>YOUR DOCUMENTS</source>
        <translation>VOS DOCUMENTS</translation>
    </message>
    <message>
        <source>%lld</source>
        <translation>%lld</translation>
    </message>
    <message numerus="yes">
        <source>%lld pages</source>
        <translation>
            <numerusform>%lld page</numerusform>
            <numerusform>%lld pages</numerusform>
        </translation>
    </message>
    <message>
        <source>Up</source>
        <extracomment>Moves the selected document one place up in the list.</extracomment>
        <translation>Monter</translation>
    </message>
    <message>
        <source>Down</source>
        <extracomment>Moves the selected document one place down in the list.</extracomment>
        <translation>Descendre</translation>
    </message>
    <message>
        <source>Remove</source>
        <extracomment>Takes the selected document off the list; its file stays where it is.</extracomment>
        <translation>Retirer</translation>
    </message>
    <message>
        <source>Drop your PDFs here</source>
        <translation>Déposez vos PDF ici</translation>
    </message>
    <message>
        <source>Add two or more documents, arrange them, then merge.</source>
        <translation>Ajoutez au moins deux documents, ordonnez-les, puis fusionnez-les.</translation>
    </message>
    <message>
        <source>A little preview</source>
        <translation>Un petit aperçu</translation>
    </message>
    <message>
        <source>Select a document to inspect its pages.</source>
        <translation>Sélectionnez un document pour examiner ses pages.</translation>
    </message>
    <message>
        <source>%lld documents · %lld pages</source>
        <extracomment>Either number may be one, so say it in a way that holds for every number, as in &quot;Documents: %lld&quot;. The first number is always the documents&apos;.</extracomment>
        <translation>Documents&#xa0;: %lld · Pages&#xa0;: %lld</translation>
    </message>
    <message>
        <source>Processed privately on your Mac</source>
        <extracomment>Say &quot;computer&quot; in the place of &quot;Mac&quot;.</extracomment>
        <translation>Traité en toute confidentialité sur votre ordinateur</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <extracomment>Say &quot;file manager&quot; in the place of &quot;Finder&quot;.</extracomment>
        <translation>Afficher dans le gestionnaire de fichiers</translation>
    </message>
    <message>
        <source>Merge PDFs…</source>
        <translation>Fusionner les PDF…</translation>
    </message>
    <message>
        <source>Merging…</source>
        <extracomment>On the button, while the merge runs.</extracomment>
        <translation>Fusion en cours…</translation>
    </message>
    <message>
        <source>Quirebind couldn’t finish</source>
        <extracomment>The title of the alert; below it stands what went wrong.</extracomment>
        <translation>Quirebind n’a pas pu terminer</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Zoom avant</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Zoom arrière</translation>
    </message>
    <message>
        <source>Fit Width</source>
        <translation>Ajuster à la largeur</translation>
    </message>
    <message>
        <source>Page %lld of %lld</source>
        <extracomment>The first number is always the page&apos;s, the second that of all pages.</extracomment>
        <translation>Page %lld sur %lld</translation>
    </message>
    <message>
        <source>Divider between the documents and the preview</source>
        <extracomment>What a screen reader calls the line that makes one side wider, the other narrower.</extracomment>
        <translation>Séparateur entre les documents et l’aperçu</translation>
    </message>
    <message>
        <source>The merge is still running</source>
        <extracomment>Said where a window is to be closed during a merge.</extracomment>
        <translation>La fusion est toujours en cours</translation>
    </message>
    <message>
        <source>This window closes as soon as the new file is written.</source>
        <translation>Cette fenêtre se fermera dès que le nouveau fichier sera écrit.</translation>
    </message>
    <message>
        <source>Keep Window Open</source>
        <translation>Garder la fenêtre ouverte</translation>
    </message>
</context>
</TS>
