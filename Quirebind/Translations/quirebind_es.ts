<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>Quirebind</name>
    <message>
        <source>Quirebind</source>
        <translation>Quirebind</translation>
    </message>
    <message>
        <source>Bring your pages together.</source>
        <translation>Reúna todas sus páginas.</translation>
    </message>
    <message>
        <source>Add PDFs…</source>
        <translation>Añadir PDF…</translation>
    </message>
    <message>
        <source>YOUR DOCUMENTS</source>
        <translation>SUS DOCUMENTOS</translation>
    </message>
    <message>
        <source>%lld</source>
        <translation>%lld</translation>
    </message>
    <message numerus="yes">
        <source>%lld pages</source>
        <translation>
            <numerusform>%lld página</numerusform>
            <numerusform>%lld páginas</numerusform>
        </translation>
    </message>
    <message>
        <source>Up</source>
        <extracomment>Moves the selected document one place up in the list.</extracomment>
        <translation>Subir</translation>
    </message>
    <message>
        <source>Down</source>
        <extracomment>Moves the selected document one place down in the list.</extracomment>
        <translation>Bajar</translation>
    </message>
    <message>
        <source>Remove</source>
        <extracomment>Takes the selected document off the list; its file stays where it is.</extracomment>
        <translation>Quitar</translation>
    </message>
    <message>
        <source>Drop your PDFs here</source>
        <translation>Suelte aquí sus PDF</translation>
    </message>
    <message>
        <source>Add two or more documents, arrange them, then merge.</source>
        <translation>Añada dos o más documentos, ordénelos y únalos.</translation>
    </message>
    <message>
        <source>A little preview</source>
        <translation>Una pequeña vista previa</translation>
    </message>
    <message>
        <source>Select a document to inspect its pages.</source>
        <translation>Seleccione un documento para examinar sus páginas.</translation>
    </message>
    <message>
        <source>%lld documents · %lld pages</source>
        <extracomment>Either number may be one, so say it in a way that holds for every number, as in &quot;Documents: %lld&quot;. The first number is always the documents&apos;.</extracomment>
        <translation>Documentos: %lld · Páginas: %lld</translation>
    </message>
    <message>
        <source>Processed privately on your Mac</source>
        <extracomment>Say &quot;computer&quot; in the place of &quot;Mac&quot;.</extracomment>
        <translation>Procesado de forma privada en su equipo</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <extracomment>Say &quot;file manager&quot; in the place of &quot;Finder&quot;.</extracomment>
        <translation>Mostrar en el gestor de archivos</translation>
    </message>
    <message>
        <source>Merge PDFs…</source>
        <translation>Unir PDF…</translation>
    </message>
    <message>
        <source>Merging…</source>
        <extracomment>On the button, while the merge runs.</extracomment>
        <translation>Uniendo…</translation>
    </message>
    <message>
        <source>Quirebind couldn’t finish</source>
        <extracomment>The title of the alert; below it stands what went wrong.</extracomment>
        <translation>Quirebind no ha podido terminar</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Acercar</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Alejar</translation>
    </message>
    <message>
        <source>Fit Width</source>
        <translation>Ajustar al ancho</translation>
    </message>
    <message>
        <source>Page %lld of %lld</source>
        <extracomment>The first number is always the page&apos;s, the second that of all pages.</extracomment>
        <translation>Página %lld de %lld</translation>
    </message>
    <message>
        <source>Divider between the documents and the preview</source>
        <extracomment>What a screen reader calls the line that makes one side wider, the other narrower.</extracomment>
        <translation>Divisor entre los documentos y la vista previa</translation>
    </message>
    <message>
        <source>The merge is still running</source>
        <extracomment>Said where a window is to be closed during a merge.</extracomment>
        <translation>La unión sigue en curso</translation>
    </message>
    <message>
        <source>This window closes as soon as the new file is written.</source>
        <translation>Esta ventana se cerrará en cuanto se haya escrito el archivo nuevo.</translation>
    </message>
    <message>
        <source>Keep Window Open</source>
        <translation>Mantener la ventana abierta</translation>
    </message>
</context>
</TS>
