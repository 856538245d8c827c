<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>QBAppDelegate</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>ولا شيء غيرها</numerusform>
            <numerusform>وواحد آخر</numerusform>
            <numerusform>واثنان آخران</numerusform>
            <numerusform>و%n أخرى</numerusform>
            <numerusform>و%n أخرى</numerusform>
            <numerusform>و%n أخرى</numerusform>
        </translation>
    </message>
    <message>
        <source>These files cannot be opened</source>
        <translation>لا يمكن فتح هذه الملفات</translation>
    </message>
    <message>
        <source>This version of Quib opens pictures only. Nothing was imported from:
%1</source>
        <translation>يفتح هذا الإصدار من Quib الصور فقط. لم يُستورد شيء من:
%1</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>موافق</translation>
    </message>
    <message>
        <source>These pictures could not be copied</source>
        <translation>تعذّر نسخ هذه الصور</translation>
    </message>
    <message>
        <source>Something went wrong</source>
        <translation>حدث خطأ ما</translation>
    </message>
    <message>
        <source>Just a moment and Quib will be ready!</source>
        <translation>لحظة واحدة وسيكون Quib جاهزًا!</translation>
    </message>
    <message>
        <source>Quib is currently speeding up your notes and migrating the database to a new version.
We highly suggest not to exit from Quib during the whole process.</source>
        <translation>يعمل Quib على تسريع ملاحظاتك ونقل قاعدة البيانات إلى إصدار جديد.
ننصح بشدة بعدم إنهاء Quib طوال هذه العملية.</translation>
    </message>
    <message>
        <source>It was not possible to migrate your database to the new version. Don&apos;t worry your notes are safe, please contact the support team using the &apos;Contact Support&apos; button below and they will help you.</source>
        <translation>تعذّر نقل قاعدة بياناتك إلى الإصدار الجديد. لا تقلق، ملاحظاتك بأمان؛ تواصل مع فريق الدعم بالزر «اتصل بالدعم» أدناه وسيساعدونك.</translation>
    </message>
    <message>
        <source>Contact Support</source>
        <translation>اتصل بالدعم</translation>
    </message>
    <message>
        <source>Your notes could not be opened</source>
        <translation>تعذّر فتح ملاحظاتك</translation>
    </message>
    <message>
        <source>The file that holds them is damaged, or is no file of Quib&apos;s. Nothing was changed. Put a copy from a backup in its place, and start Quib again.</source>
        <translation>الملف الذي يحتويها تالف، أو ليس من ملفات Quib. لم يتغيّر شيء. ضع مكانه نسخة احتياطية، ثم شغّل Quib من جديد.</translation>
    </message>
    <message>
        <source>Nothing was changed. The reason: %1</source>
        <translation>لم يتغيّر شيء. السبب: %1</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>إنهاء</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>إظهار المجلد</translation>
    </message>
</context>
<context>
    <name>QBMainWindowController</name>
    <message>
        <source>New Note</source>
        <translation>ملاحظة جديدة</translation>
    </message>
    <message>
        <source>New Note in New Window</source>
        <translation>ملاحظة جديدة في نافذة جديدة</translation>
    </message>
    <message>
        <source>Open Quickly…</source>
        <translation>فتح سريع…</translation>
    </message>
    <message>
        <source>Open in New Window</source>
        <translation>فتح في نافذة جديدة</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>تكرار</translation>
    </message>
    <message>
        <source>Merge</source>
        <translation>دمج</translation>
    </message>
    <message>
        <source>Pin to Top</source>
        <translation>تثبيت في الأعلى</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>أرشفة</translation>
    </message>
    <message>
        <source>Move to Trash</source>
        <translation>نقل إلى المهملات</translation>
    </message>
    <message>
        <source>Put Back</source>
        <translation>استعادة</translation>
    </message>
    <message>
        <source>Copy Link to Note</source>
        <translation>نسخ رابط الملاحظة</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>إغلاق النافذة</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>إنهاء</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>تراجع</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>إعادة</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>قص</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>نسخ</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>لصق</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>تحديد الكل</translation>
    </message>
    <message>
        <source>Search Notes</source>
        <translation>البحث في الملاحظات</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <translation>التفضيلات…</translation>
    </message>
    <message>
        <source>Rename Tag</source>
        <translation>إعادة تسمية الوسم</translation>
    </message>
    <message>
        <source>Delete Tag</source>
        <translation>حذف الوسم</translation>
    </message>
    <message>
        <source>Remove Tag from Notes</source>
        <translation>إزالة الوسم من الملاحظات</translation>
    </message>
    <message>
        <source>Sidebar, Notes and Editor</source>
        <translation>الشريط الجانبي والملاحظات والمحرر</translation>
    </message>
    <message>
        <source>Notes and Editor</source>
        <translation>الملاحظات والمحرر</translation>
    </message>
    <message>
        <source>Editor Only</source>
        <translation>المحرر فقط</translation>
    </message>
    <message>
        <source>Show or Hide the Sidebar</source>
        <translation>إظهار الشريط الجانبي أو إخفاؤه</translation>
    </message>
    <message>
        <source>Full Screen</source>
        <translation>ملء الشاشة</translation>
    </message>
    <message>
        <source>Next Note</source>
        <translation>الملاحظة التالية</translation>
    </message>
    <message>
        <source>Previous Note</source>
        <translation>الملاحظة السابقة</translation>
    </message>
    <message>
        <source>Go to Notes</source>
        <translation>الذهاب إلى الملاحظات</translation>
    </message>
    <message>
        <source>Go to Untagged</source>
        <translation>الذهاب إلى «بلا وسوم»</translation>
    </message>
    <message>
        <source>Go to Todo</source>
        <translation>الذهاب إلى «المهام»</translation>
    </message>
    <message>
        <source>Go to Today</source>
        <translation>الذهاب إلى «اليوم»</translation>
    </message>
    <message>
        <source>Go to Trash</source>
        <translation>الذهاب إلى المهملات</translation>
    </message>
    <message>
        <source>Keyboard to Sidebar</source>
        <translation>لوحة المفاتيح إلى الشريط الجانبي</translation>
    </message>
    <message>
        <source>Keyboard to Notes</source>
        <translation>لوحة المفاتيح إلى الملاحظات</translation>
    </message>
    <message>
        <source>Keyboard to Editor</source>
        <translation>لوحة المفاتيح إلى المحرر</translation>
    </message>
    <message>
        <source>All Commands…</source>
        <translation>كل الأوامر…</translation>
    </message>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>اختصارات لوحة المفاتيح</translation>
    </message>
    <message>
        <source>About Quib</source>
        <translation>عن Quib</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;ملف</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;تحرير</translation>
    </message>
    <message>
        <source>&amp;Note</source>
        <translation>ملا&amp;حظة</translation>
    </message>
    <message>
        <source>&amp;Tag</source>
        <translation>&amp;وسم</translation>
    </message>
    <message>
        <source>F&amp;ormat</source>
        <translation>ت&amp;نسيق</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;عرض</translation>
    </message>
    <message>
        <source>Sort Notes</source>
        <translation>فرز الملاحظات</translation>
    </message>
    <message>
        <source>Theme</source>
        <translation>السمة</translation>
    </message>
    <message>
        <source>&amp;Go</source>
        <translation>ا&amp;ذهب</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>م&amp;ساعدة</translation>
    </message>
    <message>
        <source>More</source>
        <translation>المزيد</translation>
    </message>
    <message>
        <source>Commands for this note</source>
        <translation>أوامر هذه الملاحظة</translation>
    </message>
    <message>
        <source>Date Changed</source>
        <translation>تاريخ التعديل</translation>
    </message>
    <message>
        <source>Date Created</source>
        <translation>تاريخ الإنشاء</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>العنوان</translation>
    </message>
    <message>
        <source>Ascending</source>
        <translation>تصاعدي</translation>
    </message>
    <message>
        <source>Descending</source>
        <translation>تنازلي</translation>
    </message>
    <message>
        <source>Empty Trash…</source>
        <translation>إفراغ المهملات…</translation>
    </message>
    <message>
        <source>The tag #%1 is #%2 now.</source>
        <translation>صار الوسم #%1 الآن #%2.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
    <message numerus="yes">
        <source>%n link(s) copied.</source>
        <translation>
            <numerusform>لم يُنسخ أي رابط.</numerusform>
            <numerusform>نُسخ رابط واحد.</numerusform>
            <numerusform>نُسخ رابطان.</numerusform>
            <numerusform>نُسخت %n روابط.</numerusform>
            <numerusform>نُسخ %n رابطًا.</numerusform>
            <numerusform>نُسخ %n رابط.</numerusform>
        </translation>
    </message>
    <message>
        <source>Untitled note</source>
        <translation>ملاحظة بلا عنوان</translation>
    </message>
    <message>
        <source>Open a note by its title</source>
        <translation>فتح ملاحظة بعنوانها</translation>
    </message>
    <message>
        <source>New note “%1”</source>
        <translation>ملاحظة جديدة «%1»</translation>
    </message>
    <message>
        <source>Find a command</source>
        <translation>البحث عن أمر</translation>
    </message>
    <message>
        <source>Theme: %1</source>
        <translation>السمة: %1</translation>
    </message>
    <message>
        <source>current</source>
        <translation>الحالية</translation>
    </message>
    <message>
        <source>Quib</source>
        <translation>Quib</translation>
    </message>
    <message>
        <source>“%1” could not be taken into the note.</source>
        <translation>تعذّر إدراج «%1» في الملاحظة.</translation>
    </message>
    <message>
        <source>No note matches “%1”.</source>
        <translation>لا توجد ملاحظة تطابق «%1».</translation>
    </message>
    <message>
        <source>The trash is empty.</source>
        <translation>المهملات فارغة.</translation>
    </message>
    <message>
        <source>No notes here yet.</source>
        <translation>لا توجد ملاحظات هنا بعد.</translation>
    </message>
    <message numerus="yes">
        <source>%n notes selected</source>
        <translation>
            <numerusform>لم تُحدد أي ملاحظة</numerusform>
            <numerusform>حُددت ملاحظة واحدة</numerusform>
            <numerusform>حُددت ملاحظتان</numerusform>
            <numerusform>حُددت %n ملاحظات</numerusform>
            <numerusform>حُددت %n ملاحظة</numerusform>
            <numerusform>حُددت %n ملاحظة</numerusform>
        </translation>
    </message>
    <message>
        <source>Drag them onto a tag, or choose a command from their menu.</source>
        <translation>اسحبها إلى وسم، أو اختر أمرًا من قائمتها.</translation>
    </message>
    <message>
        <source>Write your first note</source>
        <translation>اكتب ملاحظتك الأولى</translation>
    </message>
    <message>
        <source>Give it a title, tag it with a #word, tick things off with a dash at the start of a line. Everything is saved as you type.</source>
        <translation>أعطها عنوانًا، وضع لها وسمًا بكلمة مثل #كلمة، واشطب المهام بشرطة في أول السطر. يُحفظ كل شيء أثناء الكتابة.</translation>
    </message>
    <message>
        <source>No note selected</source>
        <translation>لم تُحدد أي ملاحظة</translation>
    </message>
    <message>
        <source>Choose one from the list, or press Ctrl+O to open it by its title.</source>
        <translation>اختر واحدة من القائمة، أو اضغط Ctrl+O لفتحها بعنوانها.</translation>
    </message>
    <message>
        <source>Unpin</source>
        <translation>إلغاء التثبيت</translation>
    </message>
    <message>
        <source>Unarchive</source>
        <translation>إخراج من الأرشيف</translation>
    </message>
    <message>
        <source>Delete Permanently…</source>
        <translation>حذف نهائي…</translation>
    </message>
    <message>
        <source>In the trash</source>
        <translation>في المهملات</translation>
    </message>
    <message>
        <source>Archived</source>
        <translation>مؤرشفة</translation>
    </message>
    <message>
        <source>Edited today, %1</source>
        <translation>عُدّلت اليوم، %1</translation>
    </message>
    <message>
        <source>HH:mm</source>
        <comment>time of day</comment>
        <translation>h:mm AP</translation>
    </message>
    <message>
        <source>Edited %1</source>
        <translation>عُدّلت في %1</translation>
    </message>
    <message>
        <source>Undo %1</source>
        <translation>تراجع: %1</translation>
    </message>
    <message>
        <source>Redo %1</source>
        <translation>إعادة: %1</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>ملاحظة سريعة</translation>
    </message>
    <message>
        <source>What Can Be Searched For…</source>
        <translation>ما يمكن البحث عنه…</translation>
    </message>
    <message>
        <source>Choose Symbol…</source>
        <translation>اختيار رمز…</translation>
    </message>
    <message>
        <source>Icon in the Tray</source>
        <translation>أيقونة في شريط النظام</translation>
    </message>
    <message>
        <source>Shortcuts from Everywhere…</source>
        <translation>اختصارات من كل مكان…</translation>
    </message>
    <message>
        <source>What can be searched for</source>
        <translation>ما يمكن البحث عنه</translation>
    </message>
    <message numerus="yes">
        <source>The tag #%1 was taken out of %n note(s).</source>
        <translation>
            <numerusform>لم يُزل الوسم #%1 من أي ملاحظة.</numerusform>
            <numerusform>أُزيل الوسم #%1 من ملاحظة واحدة.</numerusform>
            <numerusform>أُزيل الوسم #%1 من ملاحظتين.</numerusform>
            <numerusform>أُزيل الوسم #%1 من %n ملاحظات.</numerusform>
            <numerusform>أُزيل الوسم #%1 من %n ملاحظة.</numerusform>
            <numerusform>أُزيل الوسم #%1 من %n ملاحظة.</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose Symbol</source>
        <translation>اختيار رمز</translation>
    </message>
    <message>
        <source>“%1” could not be written.</source>
        <translation>تعذّرت كتابة «%1».</translation>
    </message>
    <message numerus="yes">
        <source>%n found</source>
        <translation>
            <numerusform>لا نتائج</numerusform>
            <numerusform>نتيجة واحدة</numerusform>
            <numerusform>نتيجتان</numerusform>
            <numerusform>%n نتائج</numerusform>
            <numerusform>%n نتيجة</numerusform>
            <numerusform>%n نتيجة</numerusform>
        </translation>
    </message>
    <message>
        <source>Print…</source>
        <translation>طباعة…</translation>
    </message>
    <message>
        <source>Print Note</source>
        <translation>طباعة الملاحظة</translation>
    </message>
    <message>
        <source>“%1” could not be printed.</source>
        <translation>تعذّرت طباعة «%1».</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>لا نتائج</translation>
    </message>
    <message>
        <source>Try fewer words, or look in all notes.</source>
        <translation>جرّب كلمات أقل، أو ابحث في كل الملاحظات.</translation>
    </message>
    <message>
        <source>These notes could not be read.</source>
        <translation>تعذّرت قراءة هذه الملاحظات.</translation>
    </message>
    <message>
        <source>Your notes could not be read</source>
        <translation>تعذّرت قراءة ملاحظاتك</translation>
    </message>
    <message>
        <source>Not saved yet</source>
        <translation>لم تُحفظ بعد</translation>
    </message>
    <message>
        <source>The note was put into the trash elsewhere.</source>
        <translation>نُقلت الملاحظة إلى المهملات من مكان آخر.</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n Notes</source>
        <translation>
            <numerusform>حذف %n ملاحظة</numerusform>
            <numerusform>حذف ملاحظة واحدة</numerusform>
            <numerusform>حذف ملاحظتين</numerusform>
            <numerusform>حذف %n ملاحظات</numerusform>
            <numerusform>حذف %n ملاحظة</numerusform>
            <numerusform>حذف %n ملاحظة</numerusform>
        </translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>حذف «%1»</translation>
    </message>
    <message>
        <source>The note was deleted elsewhere. What was not saved yet is in a new note.</source>
        <translation>حُذفت الملاحظة من مكان آخر. ما لم يُحفظ بعد موجود في ملاحظة جديدة.</translation>
    </message>
    <message>
        <source>The note was deleted elsewhere.</source>
        <translation>حُذفت الملاحظة من مكان آخر.</translation>
    </message>
</context>
<context>
    <name>QBNoteEditorViewController</name>
    <message>
        <source>Attach Files</source>
        <translation>إرفاق ملفات</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>عريض</translation>
    </message>
    <message>
        <source>Italic</source>
        <translation>مائل</translation>
    </message>
    <message>
        <source>Underline</source>
        <translation>تسطير</translation>
    </message>
    <message>
        <source>Strikethrough</source>
        <translation>يتوسطه خط</translation>
    </message>
    <message>
        <source>Highlight</source>
        <translation>تمييز</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>شيفرة</translation>
    </message>
    <message>
        <source>Bulleted List</source>
        <translation>قائمة نقطية</translation>
    </message>
    <message>
        <source>Numbered List</source>
        <translation>قائمة مرقمة</translation>
    </message>
    <message>
        <source>To-do</source>
        <translation>مهمة</translation>
    </message>
    <message>
        <source>Quote</source>
        <translation>اقتباس</translation>
    </message>
    <message>
        <source>Code Block</source>
        <translation>كتلة شيفرة</translation>
    </message>
    <message>
        <source>Line Separator</source>
        <translation>خط فاصل</translation>
    </message>
    <message>
        <source>Heading %1</source>
        <translation>عنوان %1</translation>
    </message>
    <message>
        <source>No Heading</source>
        <translation>بلا عنوان</translation>
    </message>
    <message>
        <source>Complete To-do</source>
        <translation>إتمام المهمة</translation>
    </message>
    <message>
        <source>Indent</source>
        <translation>زيادة المسافة البادئة</translation>
    </message>
    <message>
        <source>Outdent</source>
        <translation>إنقاص المسافة البادئة</translation>
    </message>
    <message>
        <source>Move Line Up</source>
        <translation>نقل السطر إلى أعلى</translation>
    </message>
    <message>
        <source>Move Line Down</source>
        <translation>نقل السطر إلى أسفل</translation>
    </message>
    <message>
        <source>Fold Completed To-dos</source>
        <translation>طي المهام المنجزة</translation>
    </message>
    <message>
        <source>Unfold Completed To-dos</source>
        <translation>بسط المهام المنجزة</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>رابط</translation>
    </message>
    <message>
        <source>Link to Note</source>
        <translation>رابط إلى ملاحظة</translation>
    </message>
    <message>
        <source>Attach Files…</source>
        <translation>إرفاق ملفات…</translation>
    </message>
    <message>
        <source>Paste as Plain Text</source>
        <translation>لصق كنص عادي</translation>
    </message>
    <message>
        <source>Complete Tag or Link</source>
        <translation>إكمال وسم أو رابط</translation>
    </message>
    <message>
        <source>Find in Note…</source>
        <translation>بحث في الملاحظة…</translation>
    </message>
    <message>
        <source>Find and Replace…</source>
        <translation>بحث واستبدال…</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>بحث عن التالي</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>بحث عن السابق</translation>
    </message>
    <message>
        <source>Typewriter Scrolling</source>
        <translation>تمرير الآلة الكاتبة</translation>
    </message>
    <message>
        <source>Focus on Paragraph</source>
        <translation>التركيز على الفقرة</translation>
    </message>
    <message>
        <source>Format Bar</source>
        <translation>شريط التنسيق</translation>
    </message>
    <message>
        <source>Note Information</source>
        <translation>معلومات الملاحظة</translation>
    </message>
    <message>
        <source>Heading</source>
        <translation>عنوان</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>صورة</translation>
    </message>
    <message>
        <source>Paste as Code Block</source>
        <translation>لصق ككتلة شيفرة</translation>
    </message>
    <message>
        <source>Copy as Text</source>
        <translation>نسخ كنص</translation>
    </message>
    <message>
        <source>Copy as Text Without Tags</source>
        <translation>نسخ كنص بلا وسوم</translation>
    </message>
    <message>
        <source>Note From Selection</source>
        <translation>ملاحظة من التحديد</translation>
    </message>
    <message>
        <source>Open Link</source>
        <translation>فتح الرابط</translation>
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
        <source>Actual Size</source>
        <translation>الحجم الفعلي</translation>
    </message>
    <message>
        <source>Wider Lines</source>
        <translation>أسطر أعرض</translation>
    </message>
    <message>
        <source>Narrower Lines</source>
        <translation>أسطر أضيق</translation>
    </message>
    <message>
        <source>Copy As</source>
        <translation>نسخ كـ</translation>
    </message>
    <message>
        <source>Paste As</source>
        <translation>لصق كـ</translation>
    </message>
    <message>
        <source>Show Notes with #%1</source>
        <translation>إظهار الملاحظات ذات الوسم #%1</translation>
    </message>
    <message>
        <source>Open Note</source>
        <translation>فتح الملاحظة</translation>
    </message>
    <message>
        <source>Copy Link</source>
        <translation>نسخ الرابط</translation>
    </message>
    <message>
        <source>Edit Link</source>
        <translation>تحرير الرابط</translation>
    </message>
    <message>
        <source>Unfold</source>
        <translation>بسط</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>فتح</translation>
    </message>
    <message>
        <source>Save As…</source>
        <translation>حفظ باسم…</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>إظهار في المجلد</translation>
    </message>
    <message>
        <source>Save Attachment</source>
        <translation>حفظ المرفق</translation>
    </message>
    <message>
        <source>Keyboard to Next Part</source>
        <translation>لوحة المفاتيح إلى الجزء التالي</translation>
    </message>
    <message>
        <source>Keyboard to Previous Part</source>
        <translation>لوحة المفاتيح إلى الجزء السابق</translation>
    </message>
</context>
<context>
    <name>QBNoteTableCellTextRenderer</name>
    <message>
        <source>A wonderful new note</source>
        <translation>ملاحظة جديدة رائعة</translation>
    </message>
    <message>
        <source>Keep calm and write something</source>
        <translation>اهدأ واكتب شيئًا</translation>
    </message>
    <message>
        <source>Conflicted</source>
        <translation>متعارضة</translation>
    </message>
</context>
<context>
    <name>QBNoteTextView</name>
    <message>
        <source>Undo</source>
        <translation>تراجع</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>إعادة</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>قص</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>نسخ</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>لصق</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>تحديد الكل</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>ملاحظة</translation>
    </message>
</context>
<context>
    <name>QBNotesTableViewController</name>
    <message>
        <source>Pin notes</source>
        <translation>تثبيت ملاحظات</translation>
    </message>
    <message>
        <source>Unpin notes</source>
        <translation>إلغاء تثبيت ملاحظات</translation>
    </message>
    <message>
        <source>Archive notes</source>
        <translation>أرشفة ملاحظات</translation>
    </message>
    <message>
        <source>Unarchive notes</source>
        <translation>إخراج ملاحظات من الأرشيف</translation>
    </message>
    <message>
        <source>Restore notes</source>
        <translation>استعادة ملاحظات</translation>
    </message>
    <message>
        <source>Delete notes</source>
        <translation>حذف ملاحظات</translation>
    </message>
    <message>
        <source>Are you sure you want to permanently delete the selected notes?</source>
        <translation>هل تريد حقًا حذف الملاحظات المحددة نهائيًا؟</translation>
    </message>
    <message>
        <source>Do not show this warning again.</source>
        <translation>عدم إظهار هذا التحذير مرة أخرى.</translation>
    </message>
    <message>
        <source>Duplicate notes</source>
        <translation>تكرار ملاحظات</translation>
    </message>
    <message>
        <source>Merge notes</source>
        <translation>دمج ملاحظات</translation>
    </message>
    <message>
        <source>Unmerge notes</source>
        <translation>فصل ملاحظات</translation>
    </message>
    <message>
        <source>Remove tag</source>
        <translation>إزالة وسم</translation>
    </message>
    <message>
        <source>Re-add tag</source>
        <translation>إعادة وسم</translation>
    </message>
    <message>
        <source>Are you sure you want to permanently delete all notes in the trash?</source>
        <translation>هل تريد حقًا حذف جميع الملاحظات في المهملات نهائيًا؟</translation>
    </message>
</context>
<context>
    <name>ShortTimeAgo</name>
    <message>
        <source>%1y</source>
        <translation>%1 سنة</translation>
    </message>
    <message>
        <source>%1M</source>
        <translation>%1 شهر</translation>
    </message>
    <message>
        <source>%1w</source>
        <translation>%1 أسبوع</translation>
    </message>
    <message>
        <source>%1d</source>
        <translation>%1 يوم</translation>
    </message>
    <message>
        <source>%1h</source>
        <translation>%1 س</translation>
    </message>
    <message>
        <source>%1m</source>
        <translation>%1 د</translation>
    </message>
    <message>
        <source>now</source>
        <translation>الآن</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Notes</source>
        <translation>الملاحظات</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>الأرشيف</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>المهملات</translation>
    </message>
    <message>
        <source>Untagged</source>
        <translation>بلا وسوم</translation>
    </message>
    <message>
        <source>Todo</source>
        <translation>المهام</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>اليوم</translation>
    </message>
    <message>
        <source>Sample Notes</source>
        <translation>ملاحظات نموذجية</translation>
    </message>
</context>
<context>
    <name>WindowFrontEnd</name>
    <message>
        <source>Another Quib has them open, and cannot be reached from here. Go on in its window, or quit it and start Quib again.</source>
        <translation>نسخة أخرى من Quib تفتحها، ولا يمكن الوصول إليها من هنا. تابع في نافذتها، أو أنهها ثم شغّل Quib من جديد.</translation>
    </message>
    <message>
        <source>Quib keeps its notes in this folder, and cannot write to it (%1). Make that possible, and start Quib again.</source>
        <translation>يحفظ Quib الملاحظات في هذا المجلد، ولا يستطيع الكتابة فيه (%1). أتح ذلك ثم شغّل Quib من جديد.</translation>
    </message>
    <message>
        <source>Your notes are in use</source>
        <translation>ملاحظاتك قيد الاستخدام</translation>
    </message>
    <message>
        <source>Your notes cannot be written to</source>
        <translation>لا يمكن الكتابة في ملاحظاتك</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>إنهاء</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>إظهار المجلد</translation>
    </message>
</context>
<context>
    <name>quib::AboutPage</name>
    <message>
        <source>Version %1</source>
        <translation>الإصدار %1</translation>
    </message>
    <message>
        <source>Notes in plain text, kept on this computer.</source>
        <translation>ملاحظات بنص عادي، محفوظة على هذا الحاسوب.</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>نسخ</translation>
    </message>
    <message>
        <source>Copy the versions</source>
        <translation>نسخ أرقام الإصدارات</translation>
    </message>
    <message>
        <source>For a bug report</source>
        <translation>للإبلاغ عن خلل</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>المكتبات</translation>
    </message>
    <message>
        <source>Their licences in full come with their packages, in %1.</source>
        <translation>نصوص تراخيصها كاملة مرفقة بحزمها في %1.</translation>
    </message>
</context>
<context>
    <name>quib::AccessibleNoteTextView</name>
    <message>
        <source>Checks or unchecks the item at the caret</source>
        <translation>يشطب العنصر عند المؤشر أو يلغي شطبه</translation>
    </message>
</context>
<context>
    <name>quib::AutomationPage</name>
    <message>
        <source>Actions</source>
        <translation>الإجراءات</translation>
    </message>
    <message>
        <source>Scripts, launchers and other programs drive Quib by addresses. They can make notes, add to them, open them and search:</source>
        <translation>تتحكم النصوص البرمجية والمشغّلات والبرامج الأخرى في Quib عبر عناوين، فتنشئ الملاحظات وتضيف إليها وتفتحها وتبحث فيها:</translation>
    </message>
    <message>
        <source>Example of an address</source>
        <translation>مثال على عنوان</translation>
    </message>
    <message>
        <source>Read More</source>
        <translation>اقرأ المزيد</translation>
    </message>
    <message>
        <source>All actions with examples</source>
        <translation>كل الإجراءات مع أمثلة</translation>
    </message>
    <message>
        <source>Token</source>
        <translation>الرمز</translation>
    </message>
    <message>
        <source>An action that lists your notes or tags answers only to who names this token. It lies in a file that you alone can read, and never leaves this computer. Give it to scripts that you trust.</source>
        <translation>لا يستجيب الإجراء الذي يسرد ملاحظاتك أو وسومك إلا لمن يذكر هذا الرمز. يوجد الرمز في ملف لا يقرؤه سواك، ولا يغادر هذا الحاسوب أبدًا. أعطه للنصوص البرمجية التي تثق بها.</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>إظهار</translation>
    </message>
    <message>
        <source>Show the token</source>
        <translation>إظهار الرمز</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>نسخ</translation>
    </message>
    <message>
        <source>Copy the token</source>
        <translation>نسخ الرمز</translation>
    </message>
    <message>
        <source>Renew…</source>
        <translation>تجديد…</translation>
    </message>
    <message>
        <source>Renew the token?</source>
        <translation>تجديد الرمز؟</translation>
    </message>
    <message>
        <source>Renew</source>
        <translation>تجديد</translation>
    </message>
    <message>
        <source>This is the new token.</source>
        <translation>هذا هو الرمز الجديد.</translation>
    </message>
    <message>
        <source>Renew the token</source>
        <translation>تجديد الرمز</translation>
    </message>
    <message>
        <source>Scripts that know the old one are shut out.</source>
        <translation>تُمنع النصوص البرمجية التي تعرف الرمز القديم.</translation>
    </message>
    <message>
        <source>Make a Token</source>
        <translation>إنشاء رمز</translation>
    </message>
    <message>
        <source>There is no token yet</source>
        <translation>لا يوجد رمز بعد</translation>
    </message>
    <message>
        <source>Until there is one, no script reads a list of notes.</source>
        <translation>لا يقرأ أي نص برمجي قائمة الملاحظات حتى يوجد.</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>رسالة</translation>
    </message>
    <message>
        <source>The token is on the clipboard.</source>
        <translation>الرمز في الحافظة.</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>رجوع</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>إخفاء</translation>
    </message>
    <message>
        <source>Hide the token</source>
        <translation>إخفاء الرمز</translation>
    </message>
</context>
<context>
    <name>quib::CompletionPopup</name>
    <message>
        <source>Completions</source>
        <translation>الإكمالات</translation>
    </message>
</context>
<context>
    <name>quib::DesktopIntegration</name>
    <message>
        <source>The desktop has Quib’s shortcuts now; its keyboard settings give them keys.</source>
        <translation>يعرف سطح المكتب الآن اختصارات Quib، وتُعيَّن مفاتيحها في إعدادات لوحة المفاتيح.</translation>
    </message>
    <message>
        <source>These keys reach Quib from everywhere: %1</source>
        <translation>تصل هذه المفاتيح إلى Quib من كل مكان: %1</translation>
    </message>
    <message>
        <source>The desktop has given Quib no shortcuts.</source>
        <translation>لم يمنح سطح المكتب Quib أي اختصارات.</translation>
    </message>
    <message>
        <source>This desktop lets no program take keys everywhere. Its keyboard settings can give a key to the command “%1”.</source>
        <translation>لا يسمح سطح المكتب هذا لأي برنامج بتلقي المفاتيح من كل مكان. يمكن في إعدادات لوحة المفاتيح تعيين مفتاح للأمر «%1».</translation>
    </message>
    <message>
        <source>Copy Command</source>
        <translation>نسخ الأمر</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>ملاحظة سريعة</translation>
    </message>
    <message>
        <source>New Note</source>
        <translation>ملاحظة جديدة</translation>
    </message>
    <message>
        <source>Search Notes</source>
        <translation>البحث في الملاحظات</translation>
    </message>
    <message>
        <source>Show Quib</source>
        <translation>إظهار Quib</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>إنهاء</translation>
    </message>
    <message>
        <source>Write a quick note</source>
        <translation>كتابة ملاحظة سريعة</translation>
    </message>
    <message>
        <source>Search the notes</source>
        <translation>البحث في الملاحظات</translation>
    </message>
</context>
<context>
    <name>quib::DetachedWindow</name>
    <message>
        <source>Close Window</source>
        <translation>إغلاق النافذة</translation>
    </message>
    <message>
        <source>Untitled note</source>
        <translation>ملاحظة بلا عنوان</translation>
    </message>
    <message>
        <source>Keep Above Others</source>
        <translation>إبقاء فوق النوافذ الأخرى</translation>
    </message>
    <message>
        <source>All Commands…</source>
        <translation>كل الأوامر…</translation>
    </message>
    <message>
        <source>Find a command</source>
        <translation>البحث عن أمر</translation>
    </message>
</context>
<context>
    <name>quib::EditorPage</name>
    <message>
        <source>Text</source>
        <translation>النص</translation>
    </message>
    <message>
        <source>Sample of a note</source>
        <translation>نموذج ملاحظة</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>الخط</translation>
    </message>
    <message>
        <source>Where this computer lacks a font, one of the same kind stands in.</source>
        <translation>إذا لم يتوفر خط على هذا الحاسوب ناب عنه خط من نوعه.</translation>
    </message>
    <message>
        <source> pt</source>
        <comment>points, behind a font size</comment>
        <translation>&#xa0;نقطة</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>حجم الخط</translation>
    </message>
    <message>
        <source>Line height</source>
        <translation>ارتفاع السطر</translation>
    </message>
    <message>
        <source>× %1</source>
        <comment>a multiple</comment>
        <translation>×&#xa0;%1</translation>
    </message>
    <message>
        <source>Line width</source>
        <translation>عرض السطر</translation>
    </message>
    <message>
        <source>%1 em</source>
        <comment>width of a line</comment>
        <translation>%1&#xa0;em</translation>
    </message>
    <message>
        <source>Space between paragraphs</source>
        <translation>المسافة بين الفقرات</translation>
    </message>
    <message>
        <source>%1 em</source>
        <comment>space</comment>
        <translation>%1&#xa0;em</translation>
    </message>
    <message>
        <source>Use the Font’s Own</source>
        <translation>استخدام قيم الخط</translation>
    </message>
    <message>
        <source>Sizes and spaces</source>
        <translation>الأحجام والمسافات</translation>
    </message>
    <message>
        <source>Every font comes with sizes that suit it.</source>
        <translation>لكل خط أحجام تناسبه.</translation>
    </message>
    <message>
        <source>Markup</source>
        <translation>الترميز</translation>
    </message>
    <message>
        <source>Notes are written in</source>
        <translation>تُكتب الملاحظات بـ</translation>
    </message>
    <message>
        <source>Your notes stay as they are written: this decides how their signs are read.</source>
        <translation>تبقى ملاحظاتك كما كُتبت، وهذا يحدد كيف تُقرأ علاماتها.</translation>
    </message>
    <message>
        <source>Quib’s markup</source>
        <translation>ترميز Quib</translation>
    </message>
    <message>
        <source>Markdown</source>
        <translation>Markdown</translation>
    </message>
    <message>
        <source>bold</source>
        <translation>عريض</translation>
    </message>
    <message>
        <source>italic</source>
        <translation>مائل</translation>
    </message>
    <message>
        <source>underlined</source>
        <translation>مسطر</translation>
    </message>
    <message>
        <source>struck</source>
        <translation>مشطوب</translation>
    </message>
    <message>
        <source>to do</source>
        <translation>للإنجاز</translation>
    </message>
    <message>
        <source>done</source>
        <translation>منجز</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>الكتابة</translation>
    </message>
    <message>
        <source>Complete tags, links and languages</source>
        <translation>إكمال الوسوم والروابط واللغات</translation>
    </message>
    <message>
        <source>A list of what fits appears while you type.</source>
        <translation>تظهر قائمة بما يناسب أثناء الكتابة.</translation>
    </message>
    <message>
        <source>Fold completed to-dos</source>
        <translation>طي المهام المنجزة</translation>
    </message>
    <message>
        <source>What is ticked off takes one short line until you open it.</source>
        <translation>ما شُطب يشغل سطرًا قصيرًا واحدًا حتى تفتحه.</translation>
    </message>
    <message>
        <source>Typewriter scrolling</source>
        <translation>تمرير الآلة الكاتبة</translation>
    </message>
    <message>
        <source>The line you write in stays at the same height.</source>
        <translation>يبقى السطر الذي تكتب فيه على الارتفاع نفسه.</translation>
    </message>
    <message>
        <source>Focus on the paragraph</source>
        <translation>التركيز على الفقرة</translation>
    </message>
    <message>
        <source>All but the paragraph you write in stands back.</source>
        <translation>يخفت كل شيء عدا الفقرة التي تكتب فيها.</translation>
    </message>
    <message>
        <source>Show the format bar</source>
        <translation>إظهار شريط التنسيق</translation>
    </message>
    <message>
        <source>Check the spelling</source>
        <translation>تدقيق الإملاء</translation>
    </message>
    <message>
        <source>Misspelt words get a wavy line, in the languages of your dictionaries.</source>
        <translation>توضع تحت الكلمات الخاطئة خطوط متموجة، بلغات قواميسك.</translation>
    </message>
    <message>
        <source>There is no dictionary on this computer. Packages of dictionaries are named %1.</source>
        <translation>لا يوجد قاموس على هذا الحاسوب. تُسمى حزم القواميس %1.</translation>
    </message>
    <message>
        <source>Languages of the spelling</source>
        <translation>لغات التدقيق الإملائي</translation>
    </message>
    <message>
        <source>Which of them a paragraph is in is told by its words.</source>
        <translation>تُعرف لغة كل فقرة من كلماتها.</translation>
    </message>
    <message>
        <source>As the Desktop</source>
        <translation>كسطح المكتب</translation>
    </message>
    <message numerus="yes">
        <source>%n languages</source>
        <translation>
            <numerusform>بلا لغات</numerusform>
            <numerusform>لغة واحدة</numerusform>
            <numerusform>لغتان</numerusform>
            <numerusform>%n لغات</numerusform>
            <numerusform>%n لغة</numerusform>
            <numerusform>%n لغة</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::EditorPane</name>
    <message>
        <source>Note</source>
        <translation>ملاحظة</translation>
    </message>
</context>
<context>
    <name>quib::FailureDialog</name>
    <message>
        <source>Quib</source>
        <translation>Quib</translation>
    </message>
</context>
<context>
    <name>quib::FindBar</name>
    <message>
        <source>Find in Note</source>
        <translation>بحث في الملاحظة</translation>
    </message>
    <message>
        <source>Find in note</source>
        <translation>بحث في الملاحظة</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>بحث</translation>
    </message>
    <message>
        <source>Match Case</source>
        <translation>مطابقة حالة الأحرف</translation>
    </message>
    <message>
        <source>Whole Words</source>
        <translation>كلمات كاملة</translation>
    </message>
    <message>
        <source>Regular Expression</source>
        <translation>تعبير نمطي</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>بحث عن السابق</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>بحث عن التالي</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>إغلاق</translation>
    </message>
    <message>
        <source>Replace with</source>
        <translation>استبدال بـ</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>استبدال</translation>
    </message>
    <message>
        <source>Replace All</source>
        <translation>استبدال الكل</translation>
    </message>
    <message>
        <source>Not a valid pattern</source>
        <translation>نمط غير صالح</translation>
    </message>
    <message>
        <source>Too much to replace</source>
        <translation>النص أكبر من أن يُستبدل</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>لم يُعثر عليه</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 من %2</translation>
    </message>
    <message numerus="yes">
        <source>%n replaced</source>
        <translation>
            <numerusform>لا استبدال</numerusform>
            <numerusform>استبدال واحد</numerusform>
            <numerusform>استبدالان</numerusform>
            <numerusform>%n استبدالات</numerusform>
            <numerusform>%n استبدالًا</numerusform>
            <numerusform>%n استبدال</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 of more than %2</source>
        <translation>%1 من أكثر من %2</translation>
    </message>
</context>
<context>
    <name>quib::FormatBar</name>
    <message>
        <source>Format</source>
        <translation>تنسيق</translation>
    </message>
    <message>
        <source>More Formats</source>
        <translation>تنسيقات أخرى</translation>
    </message>
</context>
<context>
    <name>quib::GeneralPage</name>
    <message>
        <source>Lists</source>
        <translation>القوائم</translation>
    </message>
    <message>
        <source>Sort notes by</source>
        <translation>فرز الملاحظات حسب</translation>
    </message>
    <message>
        <source>Date Changed</source>
        <translation>تاريخ التعديل</translation>
    </message>
    <message>
        <source>Date Created</source>
        <translation>تاريخ الإنشاء</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>العنوان</translation>
    </message>
    <message>
        <source>Order of notes</source>
        <translation>ترتيب الملاحظات</translation>
    </message>
    <message>
        <source>Pinned notes stand above all others.</source>
        <translation>تأتي الملاحظات المثبتة فوق كل ما عداها.</translation>
    </message>
    <message>
        <source>Descending</source>
        <translation>تنازلي</translation>
    </message>
    <message>
        <source>Ascending</source>
        <translation>تصاعدي</translation>
    </message>
    <message>
        <source>Sort tags by</source>
        <translation>فرز الوسوم حسب</translation>
    </message>
    <message>
        <source>Number of Notes</source>
        <translation>عدد الملاحظات</translation>
    </message>
    <message>
        <source>Order of tags</source>
        <translation>ترتيب الوسوم</translation>
    </message>
    <message>
        <source>Symbols for tags</source>
        <translation>رموز للوسوم</translation>
    </message>
    <message>
        <source>Tags in the sidebar get a symbol that fits their name.</source>
        <translation>تأخذ الوسوم في الشريط الجانبي رمزًا يناسب اسمها.</translation>
    </message>
    <message>
        <source>Links</source>
        <translation>الروابط</translation>
    </message>
    <message>
        <source>Look up the titles of copied links</source>
        <translation>جلب عناوين الروابط المنسوخة</translation>
    </message>
    <message>
        <source>A web address on the clipboard gets the title of its page before you paste it. Quib asks that page for it.</source>
        <translation>يأخذ عنوان الويب في الحافظة عنوان صفحته قبل أن تلصقه، ويطلبه Quib من تلك الصفحة.</translation>
    </message>
    <message>
        <source>On this computer</source>
        <translation>على هذا الحاسوب</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>إظهار المجلد</translation>
    </message>
    <message>
        <source>Show the folder of the notes</source>
        <translation>إظهار مجلد الملاحظات</translation>
    </message>
    <message>
        <source>Notes and attachments</source>
        <translation>الملاحظات والمرفقات</translation>
    </message>
    <message>
        <source>Write a log file</source>
        <translation>كتابة ملف سجل</translation>
    </message>
    <message>
        <source>For finding out what went wrong. The log has no text of your notes.</source>
        <translation>لمعرفة ما الذي تعطل. لا يحتوي السجل على نص ملاحظاتك.</translation>
    </message>
    <message>
        <source>Show the folder of the logs</source>
        <translation>إظهار مجلد السجلات</translation>
    </message>
    <message>
        <source>Logs</source>
        <translation>السجلات</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>البدء من جديد</translation>
    </message>
    <message>
        <source>Reset…</source>
        <translation>إعادة الضبط…</translation>
    </message>
    <message>
        <source>Reset all preferences?</source>
        <translation>إعادة ضبط كل التفضيلات؟</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>إعادة الضبط</translation>
    </message>
    <message>
        <source>Reset all preferences</source>
        <translation>إعادة ضبط كل التفضيلات</translation>
    </message>
    <message>
        <source>Themes, fonts, lists and writing go back to how they were. No note changes.</source>
        <translation>تعود السمات والخطوط والقوائم والكتابة كما كانت. لا تتغير أي ملاحظة.</translation>
    </message>
</context>
<context>
    <name>quib::InformationPanel</name>
    <message>
        <source>Note Information</source>
        <translation>معلومات الملاحظة</translation>
    </message>
    <message>
        <source>Words</source>
        <translation>الكلمات</translation>
    </message>
    <message>
        <source>Characters</source>
        <translation>الأحرف</translation>
    </message>
    <message>
        <source>Paragraphs</source>
        <translation>الفقرات</translation>
    </message>
    <message>
        <source>Reading time</source>
        <translation>مدة القراءة</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>التعديل</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>الإنشاء</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>المحتويات</translation>
    </message>
    <message>
        <source>Notes That Link Here</source>
        <translation>ملاحظات ترتبط بهذه</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 د</translation>
    </message>
    <message>
        <source>Headings of the note stand here.</source>
        <translation>هنا تظهر عناوين الملاحظة.</translation>
    </message>
    <message>
        <source>No note links here yet.</source>
        <translation>لا ترتبط أي ملاحظة بهذه بعد.</translation>
    </message>
    <message>
        <source>%1, heading %2</source>
        <translation>%1، عنوان %2</translation>
    </message>
</context>
<context>
    <name>quib::InlineQuestion</name>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
</context>
<context>
    <name>quib::MessageBar</name>
    <message>
        <source>Close the message</source>
        <translation>إغلاق الرسالة</translation>
    </message>
</context>
<context>
    <name>quib::NoteListModel</name>
    <message>
        <source>Untitled note</source>
        <translation>ملاحظة بلا عنوان</translation>
    </message>
    <message>
        <source>pinned</source>
        <translation>مثبتة</translation>
    </message>
    <message>
        <source>in conflict with another version</source>
        <translation>متعارضة مع نسخة أخرى</translation>
    </message>
    <message>
        <source>%1 of %2 done</source>
        <translation>أُنجز %1 من %2</translation>
    </message>
</context>
<context>
    <name>quib::NoteListView</name>
    <message>
        <source>Notes</source>
        <translation>الملاحظات</translation>
    </message>
    <message numerus="yes">
        <source>%n notes</source>
        <translation>
            <numerusform>بلا ملاحظات</numerusform>
            <numerusform>ملاحظة واحدة</numerusform>
            <numerusform>ملاحظتان</numerusform>
            <numerusform>%n ملاحظات</numerusform>
            <numerusform>%n ملاحظة</numerusform>
            <numerusform>%n ملاحظة</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::NoteTextViewSpelling</name>
    <message>
        <source>Looking for Words…</source>
        <translation>البحث عن كلمات…</translation>
    </message>
    <message>
        <source>Add “%1” to the Dictionary</source>
        <translation>إضافة «%1» إلى القاموس</translation>
    </message>
    <message>
        <source>Ignore “%1”</source>
        <translation>تجاهل «%1»</translation>
    </message>
    <message>
        <source>No Other Words Found</source>
        <translation>لم يُعثر على كلمات أخرى</translation>
    </message>
</context>
<context>
    <name>quib::OverlayScrollBar</name>
    <message>
        <source>Scroll bar</source>
        <translation>شريط التمرير</translation>
    </message>
</context>
<context>
    <name>quib::PreferencesWindow</name>
    <message>
        <source>Preferences</source>
        <translation>التفضيلات</translation>
    </message>
    <message>
        <source>Pages of the preferences</source>
        <translation>صفحات التفضيلات</translation>
    </message>
    <message>
        <source>General</source>
        <translation>عام</translation>
    </message>
    <message>
        <source>Editor</source>
        <translation>المحرر</translation>
    </message>
    <message>
        <source>Themes</source>
        <translation>السمات</translation>
    </message>
    <message>
        <source>Automation</source>
        <translation>الأتمتة</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>الاختصارات</translation>
    </message>
    <message>
        <source>About</source>
        <translation>حول</translation>
    </message>
</context>
<context>
    <name>quib::QuickNoteWindow</name>
    <message>
        <source>Saved as you type. Escape closes.</source>
        <translation>تُحفظ أثناء الكتابة. Escape للإغلاق.</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>ملاحظة سريعة</translation>
    </message>
    <message>
        <source>Open in Quib</source>
        <translation>فتح في Quib</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>إغلاق النافذة</translation>
    </message>
    <message>
        <source>Go on in the main window (Ctrl+O)</source>
        <translation>المتابعة في النافذة الرئيسية (Ctrl+O)</translation>
    </message>
</context>
<context>
    <name>quib::SavingMessage</name>
    <message>
        <source>The file of your notes is damaged, and parts of it cannot be read. Nothing is written to it any more. Quit Quib, and run “quibctl check” in a terminal to learn what is whole.</source>
        <translation>ملف ملاحظاتك تالف، وتتعذّر قراءة أجزاء منه. لن يُكتب فيه شيء بعد الآن. أنهِ Quib، ونفّذ «quibctl check» في الطرفية لتعرف ما بقي سليمًا.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: the disk is full. Make some room on it; Quib keeps trying.</source>
        <translation>لا يمكن حفظ ملاحظاتك: القرص ممتلئ. أفسح بعض المساحة؛ سيواصل Quib المحاولة.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: their folder cannot be written to. Quib keeps trying.</source>
        <translation>لا يمكن حفظ ملاحظاتك: تتعذّر الكتابة في مجلدها. سيواصل Quib المحاولة.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: another program does not let go of them. Quib keeps trying.</source>
        <translation>لا يمكن حفظ ملاحظاتك: برنامج آخر لا يتركها. سيواصل Quib المحاولة.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved. Quib keeps trying. The reason: %1</source>
        <translation>لا يمكن حفظ ملاحظاتك. سيواصل Quib المحاولة. السبب: %1</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>أعد المحاولة</translation>
    </message>
    <message>
        <source>%1 What you wrote last may be lost if you quit now.</source>
        <comment>%1 is one or more sentences</comment>
        <translation>%1 إن أنهيت الآن فقد يضيع ما كتبته أخيرًا.</translation>
    </message>
    <message>
        <source>Quit Without Saving</source>
        <translation>أنهِ من دون حفظ</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
</context>
<context>
    <name>quib::SearchField</name>
    <message>
        <source>notes with something left to do</source>
        <translation>ملاحظات فيها ما لم يُنجز</translation>
    </message>
    <message>
        <source>notes where everything is done</source>
        <translation>ملاحظات أُنجز كل ما فيها</translation>
    </message>
    <message>
        <source>notes with to-dos</source>
        <translation>ملاحظات فيها مهام</translation>
    </message>
    <message>
        <source>changed today</source>
        <translation>عُدّلت اليوم</translation>
    </message>
    <message>
        <source>changed yesterday</source>
        <translation>عُدّلت أمس</translation>
    </message>
    <message>
        <source>changed in the last seven days</source>
        <translation>عُدّلت في آخر سبعة أيام</translation>
    </message>
    <message>
        <source>changed on a day: @date(2024-12-31)</source>
        <translation>عُدّلت في يوم: @date(2024-12-31)</translation>
    </message>
    <message>
        <source>created on a day: @cdate(2024-12-31)</source>
        <translation>أُنشئت في يوم: @cdate(2024-12-31)</translation>
    </message>
    <message>
        <source>notes with pictures</source>
        <translation>ملاحظات فيها صور</translation>
    </message>
    <message>
        <source>notes with files</source>
        <translation>ملاحظات فيها ملفات</translation>
    </message>
    <message>
        <source>notes with pictures or files</source>
        <translation>ملاحظات فيها صور أو ملفات</translation>
    </message>
    <message>
        <source>notes with code</source>
        <translation>ملاحظات فيها شيفرة</translation>
    </message>
    <message>
        <source>notes with tags</source>
        <translation>ملاحظات لها وسوم</translation>
    </message>
    <message>
        <source>notes without tags</source>
        <translation>ملاحظات بلا وسوم</translation>
    </message>
    <message>
        <source>Search notes</source>
        <translation>البحث في الملاحظات</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>بحث</translation>
    </message>
    <message>
        <source>Words, &quot;phrases&quot; and #tags; a minus excludes; @ offers more</source>
        <translation>كلمات و&quot;عبارات&quot; و#وسوم؛ علامة الناقص تستبعد؛ @ تعرض المزيد</translation>
    </message>
    <message>
        <source>End the search</source>
        <translation>إنهاء البحث</translation>
    </message>
    <message>
        <source>word</source>
        <translation>كلمة</translation>
    </message>
    <message>
        <source>notes with the word, or with a word that has it in it</source>
        <translation>ملاحظات فيها الكلمة أو كلمة تحتويها</translation>
    </message>
    <message>
        <source>&quot;two words&quot;</source>
        <translation>&quot;كلمتان معًا&quot;</translation>
    </message>
    <message>
        <source>notes with just these words, one behind the other</source>
        <translation>ملاحظات فيها هذه الكلمات بعينها متتالية</translation>
    </message>
    <message>
        <source>-word</source>
        <translation>-كلمة</translation>
    </message>
    <message>
        <source>notes without the word</source>
        <translation>ملاحظات ليست فيها الكلمة</translation>
    </message>
    <message>
        <source>#tag</source>
        <translation>#وسم</translation>
    </message>
    <message>
        <source>notes with the tag in their text</source>
        <translation>ملاحظات في نصها الوسم</translation>
    </message>
</context>
<context>
    <name>quib::ShortcutsPage</name>
    <message>
        <source>or</source>
        <comment>between two shortcuts</comment>
        <translation>أو</translation>
    </message>
    <message>
        <source>No shortcut matches.</source>
        <translation>لا يوجد اختصار مطابق.</translation>
    </message>
    <message>
        <source>Search commands and keys</source>
        <translation>البحث في الأوامر والمفاتيح</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>اختصارات لوحة المفاتيح</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>الأمر</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>المفاتيح</translation>
    </message>
</context>
<context>
    <name>quib::SidebarModel</name>
    <message>
        <source>Tags</source>
        <translation>الوسوم</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n note(s)</source>
        <translation>
            <numerusform>%1، بلا ملاحظات</numerusform>
            <numerusform>%1، ملاحظة واحدة</numerusform>
            <numerusform>%1، ملاحظتان</numerusform>
            <numerusform>%1، %n ملاحظات</numerusform>
            <numerusform>%1، %n ملاحظة</numerusform>
            <numerusform>%1، %n ملاحظة</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::SidebarView</name>
    <message>
        <source>Lists and tags</source>
        <translation>القوائم والوسوم</translation>
    </message>
</context>
<context>
    <name>quib::SpokenNoteText</name>
    <message>
        <source>checked item</source>
        <translation>عنصر مشطوب</translation>
    </message>
    <message>
        <source>unchecked item</source>
        <translation>عنصر غير مشطوب</translation>
    </message>
    <message>
        <source>heading %1</source>
        <translation>عنوان %1</translation>
    </message>
    <message>
        <source>picture %1</source>
        <translation>صورة %1</translation>
    </message>
    <message>
        <source>file %1</source>
        <translation>ملف %1</translation>
    </message>
    <message>
        <source>separator</source>
        <translation>فاصل</translation>
    </message>
    <message>
        <source>folded text</source>
        <translation>نص مطوي</translation>
    </message>
    <message>
        <source>link to a note</source>
        <translation>رابط إلى ملاحظة</translation>
    </message>
    <message>
        <source>link</source>
        <translation>رابط</translation>
    </message>
</context>
<context>
    <name>quib::SymbolPicker</name>
    <message>
        <source>Symbol of the tag</source>
        <translation>رمز الوسم</translation>
    </message>
    <message>
        <source>Symbols</source>
        <translation>الرموز</translation>
    </message>
    <message>
        <source>By the Tag’s Name</source>
        <translation>حسب اسم الوسم</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>وسم</translation>
    </message>
    <message>
        <source>Animal</source>
        <translation>حيوان</translation>
    </message>
    <message>
        <source>Art</source>
        <translation>فن</translation>
    </message>
    <message>
        <source>Book</source>
        <translation>كتاب</translation>
    </message>
    <message>
        <source>Bug</source>
        <translation>حشرة</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>تقويم</translation>
    </message>
    <message>
        <source>Car</source>
        <translation>سيارة</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>شيفرة</translation>
    </message>
    <message>
        <source>Film</source>
        <translation>فيلم</translation>
    </message>
    <message>
        <source>Food</source>
        <translation>طعام</translation>
    </message>
    <message>
        <source>Game</source>
        <translation>لعبة</translation>
    </message>
    <message>
        <source>Gift</source>
        <translation>هدية</translation>
    </message>
    <message>
        <source>Health</source>
        <translation>صحة</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>منزل</translation>
    </message>
    <message>
        <source>Idea</source>
        <translation>فكرة</translation>
    </message>
    <message>
        <source>Journal</source>
        <translation>يوميات</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>رابط</translation>
    </message>
    <message>
        <source>Money</source>
        <translation>مال</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>موسيقى</translation>
    </message>
    <message>
        <source>People</source>
        <translation>أشخاص</translation>
    </message>
    <message>
        <source>Photo</source>
        <translation>صورة ضوئية</translation>
    </message>
    <message>
        <source>Plant</source>
        <translation>نبات</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>مشروع</translation>
    </message>
    <message>
        <source>School</source>
        <translation>مدرسة</translation>
    </message>
    <message>
        <source>Science</source>
        <translation>علوم</translation>
    </message>
    <message>
        <source>Shopping</source>
        <translation>تسوق</translation>
    </message>
    <message>
        <source>Sport</source>
        <translation>رياضة</translation>
    </message>
    <message>
        <source>To-do</source>
        <translation>مهمة</translation>
    </message>
    <message>
        <source>Travel</source>
        <translation>سفر</translation>
    </message>
    <message>
        <source>Work</source>
        <translation>عمل</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>كتابة</translation>
    </message>
</context>
<context>
    <name>quib::ThemeGallery</name>
    <message>
        <source>Themes</source>
        <translation>السمات</translation>
    </message>
</context>
<context>
    <name>quib::ThemeGalleryModel</name>
    <message>
        <source>%1, in use</source>
        <comment>theme</comment>
        <translation>%1، مستخدمة</translation>
    </message>
    <message>
        <source>%1, in use when the desktop is light</source>
        <comment>theme</comment>
        <translation>%1، تُستخدم حين يكون سطح المكتب فاتحًا</translation>
    </message>
    <message>
        <source>%1, in use when the desktop is dark</source>
        <comment>theme</comment>
        <translation>%1، تُستخدم حين يكون سطح المكتب داكنًا</translation>
    </message>
</context>
<context>
    <name>quib::ThemePreview</name>
    <message>
        <source>%1Low tide%2 is at nine. Take the %3slow path%4 along the harbour.</source>
        <translation>%1الجزر%2 في التاسعة. اسلك %3الطريق البطيء%4 بمحاذاة الميناء.</translation>
    </message>
    <message>
        <source>A day by the sea</source>
        <translation>يوم على شاطئ البحر</translation>
    </message>
    <message>
        <source>Pack the ::blue:: bag</source>
        <translation>تجهيز الحقيبة ::الزرقاء::</translation>
    </message>
    <message>
        <source>Buy bread and [[Cheese]]</source>
        <translation>شراء الخبز و[[الجبن]]</translation>
    </message>
    <message>
        <source>The sea is never late.</source>
        <translation>البحر لا يتأخر أبدًا.</translation>
    </message>
    <message>
        <source>travel/coast</source>
        <translation>سفر/ساحل</translation>
    </message>
</context>
<context>
    <name>quib::ThemesPage</name>
    <message>
        <source>Choose the theme for a light desktop</source>
        <translation>اختيار السمة لسطح المكتب الفاتح</translation>
    </message>
    <message>
        <source>Choose the theme for a dark desktop</source>
        <translation>اختيار السمة لسطح المكتب الداكن</translation>
    </message>
    <message>
        <source>Light desktop: %1</source>
        <translation>سطح مكتب فاتح: %1</translation>
    </message>
    <message>
        <source>Dark desktop: %1</source>
        <translation>سطح مكتب داكن: %1</translation>
    </message>
    <message>
        <source>Quib follows the desktop, which is dark at the moment.</source>
        <translation>يتبع Quib سطح المكتب، وهو داكن الآن.</translation>
    </message>
    <message>
        <source>Quib follows the desktop, which is light at the moment.</source>
        <translation>يتبع Quib سطح المكتب، وهو فاتح الآن.</translation>
    </message>
</context>
</TS>
