<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Quirebind</name>
    <message>
        <source>Quirebind</source>
        <translation>Quirebind</translation>
    </message>
    <message>
        <source>Bring your pages together.</source>
        <translation>让页面合而为一。</translation>
    </message>
    <message>
        <source>Add PDFs…</source>
        <translation>添加 PDF…</translation>
    </message>
    <message>
        <source>YOUR DOCUMENTS</source>
        <translation>您的文档</translation>
    </message>
    <message>
        <source>%lld</source>
        <translation>%lld</translation>
    </message>
    <message numerus="yes">
        <source>%lld pages</source>
        <translation>
            <numerusform>%lld 页</numerusform>
        </translation>
    </message>
    <message>
        <source>Up</source>
        <extracomment>Moves the selected document one place up in the list.</extracomment>
        <translation>上移</translation>
    </message>
    <message>
        <source>Down</source>
        <extracomment>Moves the selected document one place down in the list.</extracomment>
        <translation>下移</translation>
    </message>
    <message>
        <source>Remove</source>
        <extracomment>Takes the selected document off the list; its file stays where it is.</extracomment>
        <translation>移除</translation>
    </message>
    <message>
        <source>Drop your PDFs here</source>
        <translation>将 PDF 拖放到此处</translation>
    </message>
    <message>
        <source>Add two or more documents, arrange them, then merge.</source>
        <translation>添加两个或更多文档，排好顺序，然后合并。</translation>
    </message>
    <message>
        <source>A little preview</source>
        <translation>小小预览</translation>
    </message>
    <message>
        <source>Select a document to inspect its pages.</source>
        <translation>选择一个文档以查看其页面。</translation>
    </message>
    <message>
        <source>%lld documents · %lld pages</source>
        <extracomment>Either number may be one, so say it in a way that holds for every number, as in &quot;Documents: %lld&quot;. The first number is always the documents&apos;.</extracomment>
        <translation>%lld 个文档 · %lld 页</translation>
    </message>
    <message>
        <source>Processed privately on your Mac</source>
        <extracomment>Say &quot;computer&quot; in the place of &quot;Mac&quot;.</extracomment>
        <translation>仅在您的计算机上处理，保护隐私</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <extracomment>Say &quot;file manager&quot; in the place of &quot;Finder&quot;.</extracomment>
        <translation>在文件管理器中显示</translation>
    </message>
    <message>
        <source>Merge PDFs…</source>
        <translation>合并 PDF…</translation>
    </message>
    <message>
        <source>Merging…</source>
        <extracomment>On the button, while the merge runs.</extracomment>
        <translation>正在合并…</translation>
    </message>
    <message>
        <source>Quirebind couldn’t finish</source>
        <extracomment>The title of the alert; below it stands what went wrong.</extracomment>
        <translation>Quirebind 未能完成操作</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>复制</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>放大</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>缩小</translation>
    </message>
    <message>
        <source>Fit Width</source>
        <translation>适合宽度</translation>
    </message>
    <message>
        <source>Page %lld of %lld</source>
        <extracomment>The first number is always the page&apos;s, the second that of all pages.</extracomment>
        <translation>第 %lld 页，共 %lld 页</translation>
    </message>
    <message>
        <source>Divider between the documents and the preview</source>
        <extracomment>What a screen reader calls the line that makes one side wider, the other narrower.</extracomment>
        <translation>文档与预览之间的分隔条</translation>
    </message>
    <message>
        <source>The merge is still running</source>
        <extracomment>Said where a window is to be closed during a merge.</extracomment>
        <translation>合并仍在进行</translation>
    </message>
    <message>
        <source>This window closes as soon as the new file is written.</source>
        <translation>新文件写入完成后，此窗口将立即关闭。</translation>
    </message>
    <message>
        <source>Keep Window Open</source>
        <translation>保持窗口打开</translation>
    </message>
</context>
</TS>
