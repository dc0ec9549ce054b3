<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt" sourcelanguage="en">
<context>
    <name>Quirebind</name>
    <message>
        <source>Quirebind</source>
        <translation>Quirebind</translation>
    </message>
    <message>
        <source>Bring your pages together.</source>
        <translation>Reúna as suas páginas.</translation>
    </message>
    <message>
        <source>Add PDFs…</source>
        <translation>Adicionar PDF…</translation>
    </message>
    <message>
        <source>YOUR DOCUMENTS</source>
        <translation>SEUS DOCUMENTOS</translation>
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
        <translation>Para cima</translation>
    </message>
    <message>
        <source>Down</source>
        <extracomment>Moves the selected document one place down in the list.</extracomment>
        <translation>Para baixo</translation>
    </message>
    <message>
        <source>Remove</source>
        <extracomment>Takes the selected document off the list; its file stays where it is.</extracomment>
        <translation>Remover</translation>
    </message>
    <message>
        <source>Drop your PDFs here</source>
        <translation>Solte seus PDF aqui</translation>
    </message>
    <message>
        <source>Add two or more documents, arrange them, then merge.</source>
        <translation>Adicione dois ou mais documentos, ordene-os e depois junte-os.</translation>
    </message>
    <message>
        <source>A little preview</source>
        <translation>Uma pequena pré-visualização</translation>
    </message>
    <message>
        <source>Select a document to inspect its pages.</source>
        <translation>Selecione um documento para examinar as suas páginas.</translation>
    </message>
    <message>
        <source>%lld documents · %lld pages</source>
        <extracomment>Either number may be one, so say it in a way that holds for every number, as in &quot;Documents: %lld&quot;. The first number is always the documents&apos;.</extracomment>
        <translation>Documentos: %lld · Páginas: %lld</translation>
    </message>
    <message>
        <source>Processed privately on your Mac</source>
        <extracomment>Say &quot;computer&quot; in the place of &quot;Mac&quot;.</extracomment>
        <translation>Processado com privacidade no seu computador</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <extracomment>Say &quot;file manager&quot; in the place of &quot;Finder&quot;.</extracomment>
        <translation>Mostrar na pasta</translation>
    </message>
    <message>
        <source>Merge PDFs…</source>
        <translation>Juntar PDF…</translation>
    </message>
    <message>
        <source>Merging…</source>
        <extracomment>On the button, while the merge runs.</extracomment>
        <translation>Juntando…</translation>
    </message>
    <message>
        <source>Quirebind couldn’t finish</source>
        <extracomment>The title of the alert; below it stands what went wrong.</extracomment>
        <translation>O Quirebind não conseguiu terminar</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Ampliar</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Reduzir</translation>
    </message>
    <message>
        <source>Fit Width</source>
        <translation>Ajustar à largura</translation>
    </message>
    <message>
        <source>Page %lld of %lld</source>
        <extracomment>The first number is always the page&apos;s, the second that of all pages.</extracomment>
        <translation>Página %lld de %lld</translation>
    </message>
    <message>
        <source>Divider between the documents and the preview</source>
        <extracomment>What a screen reader calls the line that makes one side wider, the other narrower.</extracomment>
        <translation>Divisor entre os documentos e a pré-visualização</translation>
    </message>
    <message>
        <source>The merge is still running</source>
        <extracomment>Said where a window is to be closed during a merge.</extracomment>
        <translation>A junção ainda está em curso</translation>
    </message>
    <message>
        <source>This window closes as soon as the new file is written.</source>
        <translation>Esta janela será fechada assim que o novo documento for gravado.</translation>
    </message>
    <message>
        <source>Keep Window Open</source>
        <translation>Manter a janela aberta</translation>
    </message>
</context>
</TS>
