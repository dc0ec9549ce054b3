<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>Quirebind</name>
    <message>
        <source>Quirebind</source>
        <translation>Quirebind</translation>
    </message>
    <message>
        <source>Bring your pages together.</source>
        <translation>ページをひとつにまとめましょう。</translation>
    </message>
    <message>
        <source>Add PDFs…</source>
        <translation>PDF を追加…</translation>
    </message>
    <message>
        <source>YOUR DOCUMENTS</source>
        <translation>ドキュメント</translation>
    </message>
    <message>
        <source>%lld</source>
        <translation>%lld</translation>
    </message>
    <message numerus="yes">
        <source>%lld pages</source>
        <translation>
            <numerusform>%lld ページ</numerusform>
        </translation>
    </message>
    <message>
        <source>Up</source>
        <extracomment>Moves the selected document one place up in the list.</extracomment>
        <translation>上へ</translation>
    </message>
    <message>
        <source>Down</source>
        <extracomment>Moves the selected document one place down in the list.</extracomment>
        <translation>下へ</translation>
    </message>
    <message>
        <source>Remove</source>
        <extracomment>Takes the selected document off the list; its file stays where it is.</extracomment>
        <translation>取り除く</translation>
    </message>
    <message>
        <source>Drop your PDFs here</source>
        <translation>PDF をここにドロップ</translation>
    </message>
    <message>
        <source>Add two or more documents, arrange them, then merge.</source>
        <translation>2 つ以上のドキュメントを追加し、順番を整えてから結合します。</translation>
    </message>
    <message>
        <source>A little preview</source>
        <translation>プレビュー</translation>
    </message>
    <message>
        <source>Select a document to inspect its pages.</source>
        <translation>ドキュメントを選択すると、ページを確認できます。</translation>
    </message>
    <message>
        <source>%lld documents · %lld pages</source>
        <extracomment>Either number may be one, so say it in a way that holds for every number, as in &quot;Documents: %lld&quot;. The first number is always the documents&apos;.</extracomment>
        <translation>%lld 個のドキュメント · %lld ページ</translation>
    </message>
    <message>
        <source>Processed privately on your Mac</source>
        <extracomment>Say &quot;computer&quot; in the place of &quot;Mac&quot;.</extracomment>
        <translation>処理はこのコンピューター内だけで行われます</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <extracomment>Say &quot;file manager&quot; in the place of &quot;Finder&quot;.</extracomment>
        <translation>ファイルマネージャーで表示</translation>
    </message>
    <message>
        <source>Merge PDFs…</source>
        <translation>PDF を結合…</translation>
    </message>
    <message>
        <source>Merging…</source>
        <extracomment>On the button, while the merge runs.</extracomment>
        <translation>結合中…</translation>
    </message>
    <message>
        <source>Quirebind couldn’t finish</source>
        <extracomment>The title of the alert; below it stands what went wrong.</extracomment>
        <translation>Quirebind は処理を完了できませんでした</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>拡大</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>縮小</translation>
    </message>
    <message>
        <source>Fit Width</source>
        <translation>幅に合わせる</translation>
    </message>
    <message>
        <source>Page %lld of %lld</source>
        <extracomment>The first number is always the page&apos;s, the second that of all pages.</extracomment>
        <translation>%lld ページ（全 %lld ページ）</translation>
    </message>
    <message>
        <source>Divider between the documents and the preview</source>
        <extracomment>What a screen reader calls the line that makes one side wider, the other narrower.</extracomment>
        <translation>ドキュメントとプレビューの境界線</translation>
    </message>
    <message>
        <source>The merge is still running</source>
        <extracomment>Said where a window is to be closed during a merge.</extracomment>
        <translation>まだ結合しています</translation>
    </message>
    <message>
        <source>This window closes as soon as the new file is written.</source>
        <translation>新しいファイルの書き込みが終わると、このウィンドウは閉じます。</translation>
    </message>
    <message>
        <source>Keep Window Open</source>
        <translation>ウィンドウを開いたままにする</translation>
    </message>
</context>
</TS>
