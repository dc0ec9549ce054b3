<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="he" sourcelanguage="en">
<context>
    <name>Quirebind</name>
    <message>
        <source>Quirebind</source>
        <translation>Quirebind</translation>
    </message>
    <message>
        <source>Bring your pages together.</source>
        <translation>לאחד את כל העמודים יחד.</translation>
    </message>
    <message>
        <source>Add PDFs…</source>
        <translation>הוספת קובצי PDF…</translation>
    </message>
    <message>
        <source>YOUR DOCUMENTS</source>
        <translation>המסמכים שלך</translation>
    </message>
    <message>
        <source>%lld</source>
        <translation>%lld</translation>
    </message>
    <message numerus="yes">
        <source>%lld pages</source>
        <translation>
            <numerusform>עמוד %lld</numerusform>
            <numerusform>%lld עמודים</numerusform>
        </translation>
    </message>
    <message>
        <source>Up</source>
        <extracomment>Moves the selected document one place up in the list.</extracomment>
        <translation>למעלה</translation>
    </message>
    <message>
        <source>Down</source>
        <extracomment>Moves the selected document one place down in the list.</extracomment>
        <translation>למטה</translation>
    </message>
    <message>
        <source>Remove</source>
        <extracomment>Takes the selected document off the list; its file stays where it is.</extracomment>
        <translation>הסרה</translation>
    </message>
    <message>
        <source>Drop your PDFs here</source>
        <translation>יש לגרור לכאן קובצי PDF</translation>
    </message>
    <message>
        <source>Add two or more documents, arrange them, then merge.</source>
        <translation>יש להוסיף שני מסמכים או יותר, לסדר אותם ואז למזג.</translation>
    </message>
    <message>
        <source>A little preview</source>
        <translation>תצוגה מקדימה קטנה</translation>
    </message>
    <message>
        <source>Select a document to inspect its pages.</source>
        <translation>יש לבחור מסמך כדי לעיין בעמודיו.</translation>
    </message>
    <message>
        <source>%lld documents · %lld pages</source>
        <extracomment>Either number may be one, so say it in a way that holds for every number, as in &quot;Documents: %lld&quot;. The first number is always the documents&apos;.</extracomment>
        <translation>מסמכים: %lld · עמודים: %lld</translation>
    </message>
    <message>
        <source>Processed privately on your Mac</source>
        <extracomment>Say &quot;computer&quot; in the place of &quot;Mac&quot;.</extracomment>
        <translation>העיבוד מתבצע בפרטיות במחשב שלך</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <extracomment>Say &quot;file manager&quot; in the place of &quot;Finder&quot;.</extracomment>
        <translation>הצגה במנהל הקבצים</translation>
    </message>
    <message>
        <source>Merge PDFs…</source>
        <translation>מיזוג קובצי PDF…</translation>
    </message>
    <message>
        <source>Merging…</source>
        <extracomment>On the button, while the merge runs.</extracomment>
        <translation>מתבצע מיזוג…</translation>
    </message>
    <message>
        <source>Quirebind couldn’t finish</source>
        <extracomment>The title of the alert; below it stands what went wrong.</extracomment>
        <translation>התוכנה Quirebind לא הצליחה להשלים את הפעולה</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>אישור</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>העתקה</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>הגדלה</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>הקטנה</translation>
    </message>
    <message>
        <source>Fit Width</source>
        <translation>התאמה לרוחב</translation>
    </message>
    <message>
        <source>Page %lld of %lld</source>
        <extracomment>The first number is always the page&apos;s, the second that of all pages.</extracomment>
        <translation>עמוד %lld מתוך %lld</translation>
    </message>
    <message>
        <source>Divider between the documents and the preview</source>
        <extracomment>What a screen reader calls the line that makes one side wider, the other narrower.</extracomment>
        <translation>קו הפרדה בין המסמכים לתצוגה המקדימה</translation>
    </message>
    <message>
        <source>The merge is still running</source>
        <extracomment>Said where a window is to be closed during a merge.</extracomment>
        <translation>המיזוג עדיין מתבצע</translation>
    </message>
    <message>
        <source>This window closes as soon as the new file is written.</source>
        <translation>החלון ייסגר מיד עם סיום כתיבת הקובץ החדש.</translation>
    </message>
    <message>
        <source>Keep Window Open</source>
        <translation>להשאיר את החלון פתוח</translation>
    </message>
</context>
</TS>
