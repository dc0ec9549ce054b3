<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>Quirebind</name>
    <message>
        <source>Quirebind</source>
        <translation>Quirebind</translation>
    </message>
    <message>
        <source>Bring your pages together.</source>
        <translation>اجمع صفحاتك معًا.</translation>
    </message>
    <message>
        <source>Add PDFs…</source>
        <translation>إضافة ملفات PDF…</translation>
    </message>
    <message>
        <source>YOUR DOCUMENTS</source>
        <translation>مستنداتك</translation>
    </message>
    <message>
        <source>%lld</source>
        <translation>%lld</translation>
    </message>
    <message numerus="yes">
        <source>%lld pages</source>
        <translation>
            <numerusform>%lld صفحة</numerusform>
            <numerusform>%lld صفحة</numerusform>
            <numerusform>%lld صفحتان</numerusform>
            <numerusform>%lld صفحات</numerusform>
            <numerusform>%lld صفحة</numerusform>
            <numerusform>%lld صفحة</numerusform>
        </translation>
    </message>
    <message>
        <source>Up</source>
        <extracomment>Moves the selected document one place up in the list.</extracomment>
        <translation>إلى الأعلى</translation>
    </message>
    <message>
        <source>Down</source>
        <extracomment>Moves the selected document one place down in the list.</extracomment>
        <translation>إلى الأسفل</translation>
    </message>
    <message>
        <source>Remove</source>
        <extracomment>Takes the selected document off the list; its file stays where it is.</extracomment>
        <translation>إزالة</translation>
    </message>
    <message>
        <source>Drop your PDFs here</source>
        <translation>أفلت ملفات PDF هنا</translation>
    </message>
    <message>
        <source>Add two or more documents, arrange them, then merge.</source>
        <translation>أضف مستندين أو أكثر، ورتّبها، ثم ادمجها.</translation>
    </message>
    <message>
        <source>A little preview</source>
        <translation>معاينة صغيرة</translation>
    </message>
    <message>
        <source>Select a document to inspect its pages.</source>
        <translation>حدّد مستندًا لتفحّص صفحاته.</translation>
    </message>
    <message>
        <source>%lld documents · %lld pages</source>
        <extracomment>Either number may be one, so say it in a way that holds for every number, as in &quot;Documents: %lld&quot;. The first number is always the documents&apos;.</extracomment>
        <translation>المستندات: %lld · الصفحات: %lld</translation>
    </message>
    <message>
        <source>Processed privately on your Mac</source>
        <extracomment>Say &quot;computer&quot; in the place of &quot;Mac&quot;.</extracomment>
        <translation>تجري المعالجة بخصوصية على حاسوبك</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <extracomment>Say &quot;file manager&quot; in the place of &quot;Finder&quot;.</extracomment>
        <translation>إظهار في مدير الملفات</translation>
    </message>
    <message>
        <source>Merge PDFs…</source>
        <translation>دمج ملفات PDF…</translation>
    </message>
    <message>
        <source>Merging…</source>
        <extracomment>On the button, while the merge runs.</extracomment>
        <translation>يجري الدمج…</translation>
    </message>
    <message>
        <source>Quirebind couldn’t finish</source>
        <extracomment>The title of the alert; below it stands what went wrong.</extracomment>
        <translation>تعذّر على Quirebind إتمام العملية</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>موافق</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>نسخ</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>تكبير</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>تصغير</translation>
    </message>
    <message>
        <source>Fit Width</source>
        <translation>ملاءمة العرض</translation>
    </message>
    <message>
        <source>Page %lld of %lld</source>
        <extracomment>The first number is always the page&apos;s, the second that of all pages.</extracomment>
        <translation>الصفحة %lld من %lld</translation>
    </message>
    <message>
        <source>Divider between the documents and the preview</source>
        <extracomment>What a screen reader calls the line that makes one side wider, the other narrower.</extracomment>
        <translation>فاصل بين المستندات والمعاينة</translation>
    </message>
    <message>
        <source>The merge is still running</source>
        <extracomment>Said where a window is to be closed during a merge.</extracomment>
        <translation>لا يزال الدمج جاريًا</translation>
    </message>
    <message>
        <source>This window closes as soon as the new file is written.</source>
        <translation>ستُغلق هذه النافذة فور الانتهاء من كتابة الملف الجديد.</translation>
    </message>
    <message>
        <source>Keep Window Open</source>
        <translation>إبقاء النافذة مفتوحة</translation>
    </message>
</context>
</TS>
