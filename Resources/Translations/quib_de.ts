<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>QBAppDelegate</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>und ein weiteres</numerusform>
            <numerusform>und %n weitere</numerusform>
        </translation>
    </message>
    <message>
        <source>These files cannot be opened</source>
        <translation>Diese Dateien können nicht geöffnet werden</translation>
    </message>
    <message>
        <source>This version of Quib opens pictures only. Nothing was imported from:
%1</source>
        <translation>Diese Version von Quib öffnet nur Bilder. Nichts wurde importiert aus:
%1</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>These pictures could not be copied</source>
        <translation>Diese Bilder konnten nicht kopiert werden</translation>
    </message>
    <message>
        <source>Something went wrong</source>
        <translation>Etwas ist schiefgegangen</translation>
    </message>
    <message>
        <source>Just a moment and Quib will be ready!</source>
        <translation>Einen Moment, gleich ist Quib bereit!</translation>
    </message>
    <message>
        <source>Quib is currently speeding up your notes and migrating the database to a new version.
We highly suggest not to exit from Quib during the whole process.</source>
        <translation>Quib macht Ihre Notizen schneller und überführt die Datenbank in eine neue Version.
Bitte beenden Sie Quib währenddessen nicht.</translation>
    </message>
    <message>
        <source>It was not possible to migrate your database to the new version. Don&apos;t worry your notes are safe, please contact the support team using the &apos;Contact Support&apos; button below and they will help you.</source>
        <translation>Die Datenbank konnte nicht in die neue Version überführt werden. Keine Sorge, Ihre Notizen sind sicher. Bitte wenden Sie sich über „Support kontaktieren“ an den Support, man wird Ihnen dort helfen.</translation>
    </message>
    <message>
        <source>Contact Support</source>
        <translation>Support kontaktieren</translation>
    </message>
    <message>
        <source>Your notes could not be opened</source>
        <translation>Ihre Notizen konnten nicht geöffnet werden</translation>
    </message>
    <message>
        <source>The file that holds them is damaged, or is no file of Quib&apos;s. Nothing was changed. Put a copy from a backup in its place, and start Quib again.</source>
        <translation>Die Datei, in der sie liegen, ist beschädigt oder keine Datei von Quib. Es wurde nichts verändert. Legen Sie eine Kopie aus einer Sicherung an ihre Stelle und starten Sie Quib neu.</translation>
    </message>
    <message>
        <source>Nothing was changed. The reason: %1</source>
        <translation>Es wurde nichts verändert. Der Grund: %1</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>Ordner anzeigen</translation>
    </message>
</context>
<context>
    <name>QBMainWindowController</name>
    <message>
        <source>New Note</source>
        <translation>Neue Notiz</translation>
    </message>
    <message>
        <source>New Note in New Window</source>
        <translation>Neue Notiz in neuem Fenster</translation>
    </message>
    <message>
        <source>Open Quickly…</source>
        <translation>Schnell öffnen …</translation>
    </message>
    <message>
        <source>Open in New Window</source>
        <translation>In neuem Fenster öffnen</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Duplizieren</translation>
    </message>
    <message>
        <source>Merge</source>
        <translation>Zusammenführen</translation>
    </message>
    <message>
        <source>Pin to Top</source>
        <translation>Oben anheften</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Archivieren</translation>
    </message>
    <message>
        <source>Move to Trash</source>
        <translation>In den Papierkorb verschieben</translation>
    </message>
    <message>
        <source>Put Back</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Copy Link to Note</source>
        <translation>Link zur Notiz kopieren</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>Fenster schließen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Search Notes</source>
        <translation>Notizen durchsuchen</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <translation>Einstellungen …</translation>
    </message>
    <message>
        <source>Rename Tag</source>
        <translation>Schlagwort umbenennen</translation>
    </message>
    <message>
        <source>Delete Tag</source>
        <translation>Schlagwort löschen</translation>
    </message>
    <message>
        <source>Remove Tag from Notes</source>
        <translation>Schlagwort aus Notizen entfernen</translation>
    </message>
    <message>
        <source>Sidebar, Notes and Editor</source>
        <translation>Seitenleiste, Notizen und Editor</translation>
    </message>
    <message>
        <source>Notes and Editor</source>
        <translation>Notizen und Editor</translation>
    </message>
    <message>
        <source>Editor Only</source>
        <translation>Nur Editor</translation>
    </message>
    <message>
        <source>Show or Hide the Sidebar</source>
        <translation>Seitenleiste ein- oder ausblenden</translation>
    </message>
    <message>
        <source>Full Screen</source>
        <translation>Vollbild</translation>
    </message>
    <message>
        <source>Next Note</source>
        <translation>Nächste Notiz</translation>
    </message>
    <message>
        <source>Previous Note</source>
        <translation>Vorherige Notiz</translation>
    </message>
    <message>
        <source>Go to Notes</source>
        <translation>Zu den Notizen</translation>
    </message>
    <message>
        <source>Go to Untagged</source>
        <translation>Zu „Ohne Schlagwort“</translation>
    </message>
    <message>
        <source>Go to Todo</source>
        <translation>Zu „Aufgaben“</translation>
    </message>
    <message>
        <source>Go to Today</source>
        <translation>Zu „Heute“</translation>
    </message>
    <message>
        <source>Go to Trash</source>
        <translation>Zum Papierkorb</translation>
    </message>
    <message>
        <source>Keyboard to Sidebar</source>
        <translation>Tastatur in die Seitenleiste</translation>
    </message>
    <message>
        <source>Keyboard to Notes</source>
        <translation>Tastatur in die Notizliste</translation>
    </message>
    <message>
        <source>Keyboard to Editor</source>
        <translation>Tastatur in den Editor</translation>
    </message>
    <message>
        <source>All Commands…</source>
        <translation>Alle Befehle …</translation>
    </message>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>About Quib</source>
        <translation>Über Quib</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Note</source>
        <translation>&amp;Notiz</translation>
    </message>
    <message>
        <source>&amp;Tag</source>
        <translation>&amp;Schlagwort</translation>
    </message>
    <message>
        <source>F&amp;ormat</source>
        <translation>&amp;Format</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Sort Notes</source>
        <translation>Notizen sortieren</translation>
    </message>
    <message>
        <source>Theme</source>
        <translation>Thema</translation>
    </message>
    <message>
        <source>&amp;Go</source>
        <translation>&amp;Gehe zu</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
    <message>
        <source>Commands for this note</source>
        <translation>Befehle für diese Notiz</translation>
    </message>
    <message>
        <source>Date Changed</source>
        <translation>Änderungsdatum</translation>
    </message>
    <message>
        <source>Date Created</source>
        <translation>Erstellungsdatum</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Ascending</source>
        <translation>Aufsteigend</translation>
    </message>
    <message>
        <source>Descending</source>
        <translation>Absteigend</translation>
    </message>
    <message>
        <source>Empty Trash…</source>
        <translation>Papierkorb leeren …</translation>
    </message>
    <message>
        <source>The tag #%1 is #%2 now.</source>
        <translation>Das Schlagwort #%1 heißt jetzt #%2.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message numerus="yes">
        <source>%n link(s) copied.</source>
        <translation>
            <numerusform>%n Link kopiert.</numerusform>
            <numerusform>%n Links kopiert.</numerusform>
        </translation>
    </message>
    <message>
        <source>Untitled note</source>
        <translation>Notiz ohne Titel</translation>
    </message>
    <message>
        <source>Open a note by its title</source>
        <translation>Notiz über ihren Titel öffnen</translation>
    </message>
    <message>
        <source>New note “%1”</source>
        <translation>Neue Notiz „%1“</translation>
    </message>
    <message>
        <source>Find a command</source>
        <translation>Befehl suchen</translation>
    </message>
    <message>
        <source>Theme: %1</source>
        <translation>Thema: %1</translation>
    </message>
    <message>
        <source>current</source>
        <translation>aktuell</translation>
    </message>
    <message>
        <source>Quib</source>
        <translation>Quib</translation>
    </message>
    <message>
        <source>“%1” could not be taken into the note.</source>
        <translation>„%1“ konnte nicht in die Notiz übernommen werden.</translation>
    </message>
    <message>
        <source>No note matches “%1”.</source>
        <translation>Keine Notiz passt zu „%1“.</translation>
    </message>
    <message>
        <source>The trash is empty.</source>
        <translation>Der Papierkorb ist leer.</translation>
    </message>
    <message>
        <source>No notes here yet.</source>
        <translation>Hier gibt es noch keine Notizen.</translation>
    </message>
    <message numerus="yes">
        <source>%n notes selected</source>
        <translation>
            <numerusform>%n Notiz ausgewählt</numerusform>
            <numerusform>%n Notizen ausgewählt</numerusform>
        </translation>
    </message>
    <message>
        <source>Drag them onto a tag, or choose a command from their menu.</source>
        <translation>Ziehen Sie sie auf ein Schlagwort oder wählen Sie einen Befehl aus ihrem Menü.</translation>
    </message>
    <message>
        <source>Write your first note</source>
        <translation>Schreiben Sie Ihre erste Notiz</translation>
    </message>
    <message>
        <source>Give it a title, tag it with a #word, tick things off with a dash at the start of a line. Everything is saved as you type.</source>
        <translation>Geben Sie ihr einen Titel, versehen Sie sie mit einem #Schlagwort, haken Sie Dinge mit einem Strich am Zeilenanfang ab. Alles wird beim Schreiben gespeichert.</translation>
    </message>
    <message>
        <source>No note selected</source>
        <translation>Keine Notiz ausgewählt</translation>
    </message>
    <message>
        <source>Choose one from the list, or press Ctrl+O to open it by its title.</source>
        <translation>Wählen Sie eine aus der Liste, oder öffnen Sie sie mit Strg+O über ihren Titel.</translation>
    </message>
    <message>
        <source>Unpin</source>
        <translation>Nicht mehr anheften</translation>
    </message>
    <message>
        <source>Unarchive</source>
        <translation>Aus dem Archiv holen</translation>
    </message>
    <message>
        <source>Delete Permanently…</source>
        <translation>Endgültig löschen …</translation>
    </message>
    <message>
        <source>In the trash</source>
        <translation>Im Papierkorb</translation>
    </message>
    <message>
        <source>Archived</source>
        <translation>Archiviert</translation>
    </message>
    <message>
        <source>Edited today, %1</source>
        <translation>Heute um %1 bearbeitet</translation>
    </message>
    <message>
        <source>HH:mm</source>
        <comment>time of day</comment>
        <translation>HH:mm</translation>
    </message>
    <message>
        <source>Edited %1</source>
        <translation>Bearbeitet am %1</translation>
    </message>
    <message>
        <source>Undo %1</source>
        <translation>%1 rückgängig machen</translation>
    </message>
    <message>
        <source>Redo %1</source>
        <translation>%1 wiederholen</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>Schnelle Notiz</translation>
    </message>
    <message>
        <source>What Can Be Searched For…</source>
        <translation>Was man suchen kann …</translation>
    </message>
    <message>
        <source>Choose Symbol…</source>
        <translation>Symbol wählen …</translation>
    </message>
    <message>
        <source>Icon in the Tray</source>
        <translation>Symbol im Benachrichtigungsbereich</translation>
    </message>
    <message>
        <source>Shortcuts from Everywhere…</source>
        <translation>Tastenkürzel aus allen Programmen …</translation>
    </message>
    <message>
        <source>What can be searched for</source>
        <translation>Was man suchen kann</translation>
    </message>
    <message numerus="yes">
        <source>The tag #%1 was taken out of %n note(s).</source>
        <translation>
            <numerusform>Das Schlagwort #%1 wurde aus %n Notiz entfernt.</numerusform>
            <numerusform>Das Schlagwort #%1 wurde aus %n Notizen entfernt.</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose Symbol</source>
        <translation>Symbol wählen</translation>
    </message>
    <message>
        <source>“%1” could not be written.</source>
        <translation>„%1“ konnte nicht geschrieben werden.</translation>
    </message>
    <message numerus="yes">
        <source>%n found</source>
        <translation>
            <numerusform>%n gefunden</numerusform>
            <numerusform>%n gefunden</numerusform>
        </translation>
    </message>
    <message>
        <source>Print…</source>
        <translation>Drucken …</translation>
    </message>
    <message>
        <source>Print Note</source>
        <translation>Notiz drucken</translation>
    </message>
    <message>
        <source>“%1” could not be printed.</source>
        <translation>„%1“ konnte nicht gedruckt werden.</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Nichts gefunden</translation>
    </message>
    <message>
        <source>Try fewer words, or look in all notes.</source>
        <translation>Versuchen Sie es mit weniger Wörtern, oder suchen Sie in allen Notizen.</translation>
    </message>
    <message>
        <source>These notes could not be read.</source>
        <translation>Diese Notizen konnten nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Your notes could not be read</source>
        <translation>Ihre Notizen konnten nicht gelesen werden</translation>
    </message>
    <message>
        <source>Not saved yet</source>
        <translation>Noch nicht gespeichert</translation>
    </message>
    <message>
        <source>The note was put into the trash elsewhere.</source>
        <translation>Die Notiz wurde anderswo in den Papierkorb gelegt.</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n Notes</source>
        <translation>
            <numerusform>%n Notiz löschen</numerusform>
            <numerusform>%n Notizen löschen</numerusform>
        </translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>„%1“ löschen</translation>
    </message>
    <message>
        <source>The note was deleted elsewhere. What was not saved yet is in a new note.</source>
        <translation>Die Notiz wurde anderswo gelöscht. Was noch nicht gesichert war, steht in einer neuen Notiz.</translation>
    </message>
    <message>
        <source>The note was deleted elsewhere.</source>
        <translation>Die Notiz wurde anderswo gelöscht.</translation>
    </message>
</context>
<context>
    <name>QBNoteEditorViewController</name>
    <message>
        <source>Attach Files</source>
        <translation>Dateien anhängen</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Fett</translation>
    </message>
    <message>
        <source>Italic</source>
        <translation>Kursiv</translation>
    </message>
    <message>
        <source>Underline</source>
        <translation>Unterstrichen</translation>
    </message>
    <message>
        <source>Strikethrough</source>
        <translation>Durchgestrichen</translation>
    </message>
    <message>
        <source>Highlight</source>
        <translation>Hervorgehoben</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>Bulleted List</source>
        <translation>Aufzählung</translation>
    </message>
    <message>
        <source>Numbered List</source>
        <translation>Nummerierte Liste</translation>
    </message>
    <message>
        <source>To-do</source>
        <translation>Aufgabe</translation>
    </message>
    <message>
        <source>Quote</source>
        <translation>Zitat</translation>
    </message>
    <message>
        <source>Code Block</source>
        <translation>Codeblock</translation>
    </message>
    <message>
        <source>Line Separator</source>
        <translation>Trennlinie</translation>
    </message>
    <message>
        <source>Heading %1</source>
        <translation>Überschrift %1</translation>
    </message>
    <message>
        <source>No Heading</source>
        <translation>Keine Überschrift</translation>
    </message>
    <message>
        <source>Complete To-do</source>
        <translation>Aufgabe abhaken</translation>
    </message>
    <message>
        <source>Indent</source>
        <translation>Einrücken</translation>
    </message>
    <message>
        <source>Outdent</source>
        <translation>Ausrücken</translation>
    </message>
    <message>
        <source>Move Line Up</source>
        <translation>Zeile nach oben verschieben</translation>
    </message>
    <message>
        <source>Move Line Down</source>
        <translation>Zeile nach unten verschieben</translation>
    </message>
    <message>
        <source>Fold Completed To-dos</source>
        <translation>Erledigte Aufgaben einklappen</translation>
    </message>
    <message>
        <source>Unfold Completed To-dos</source>
        <translation>Erledigte Aufgaben ausklappen</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>Link</translation>
    </message>
    <message>
        <source>Link to Note</source>
        <translation>Link zu einer Notiz</translation>
    </message>
    <message>
        <source>Attach Files…</source>
        <translation>Dateien anhängen …</translation>
    </message>
    <message>
        <source>Paste as Plain Text</source>
        <translation>Als reinen Text einfügen</translation>
    </message>
    <message>
        <source>Complete Tag or Link</source>
        <translation>Schlagwort oder Link vervollständigen</translation>
    </message>
    <message>
        <source>Find in Note…</source>
        <translation>In Notiz suchen …</translation>
    </message>
    <message>
        <source>Find and Replace…</source>
        <translation>Suchen und ersetzen …</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Weitersuchen</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Rückwärts suchen</translation>
    </message>
    <message>
        <source>Typewriter Scrolling</source>
        <translation>Schreibmaschinen-Bildlauf</translation>
    </message>
    <message>
        <source>Focus on Paragraph</source>
        <translation>Absatz im Fokus</translation>
    </message>
    <message>
        <source>Format Bar</source>
        <translation>Formatleiste</translation>
    </message>
    <message>
        <source>Note Information</source>
        <translation>Notizinformationen</translation>
    </message>
    <message>
        <source>Heading</source>
        <translation>Überschrift</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Paste as Code Block</source>
        <translation>Als Codeblock einfügen</translation>
    </message>
    <message>
        <source>Copy as Text</source>
        <translation>Als Text kopieren</translation>
    </message>
    <message>
        <source>Copy as Text Without Tags</source>
        <translation>Als Text ohne Schlagwörter kopieren</translation>
    </message>
    <message>
        <source>Note From Selection</source>
        <translation>Notiz aus Auswahl</translation>
    </message>
    <message>
        <source>Open Link</source>
        <translation>Link öffnen</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Actual Size</source>
        <translation>Originalgröße</translation>
    </message>
    <message>
        <source>Wider Lines</source>
        <translation>Breitere Zeilen</translation>
    </message>
    <message>
        <source>Narrower Lines</source>
        <translation>Schmalere Zeilen</translation>
    </message>
    <message>
        <source>Copy As</source>
        <translation>Kopieren als</translation>
    </message>
    <message>
        <source>Paste As</source>
        <translation>Einfügen als</translation>
    </message>
    <message>
        <source>Show Notes with #%1</source>
        <translation>Notizen mit #%1 anzeigen</translation>
    </message>
    <message>
        <source>Open Note</source>
        <translation>Notiz öffnen</translation>
    </message>
    <message>
        <source>Copy Link</source>
        <translation>Link kopieren</translation>
    </message>
    <message>
        <source>Edit Link</source>
        <translation>Link bearbeiten</translation>
    </message>
    <message>
        <source>Unfold</source>
        <translation>Ausklappen</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Save As…</source>
        <translation>Speichern unter …</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>Im Ordner anzeigen</translation>
    </message>
    <message>
        <source>Save Attachment</source>
        <translation>Anhang speichern</translation>
    </message>
    <message>
        <source>Keyboard to Next Part</source>
        <translation>Tastatur in den nächsten Bereich</translation>
    </message>
    <message>
        <source>Keyboard to Previous Part</source>
        <translation>Tastatur in den vorherigen Bereich</translation>
    </message>
</context>
<context>
    <name>QBNoteTableCellTextRenderer</name>
    <message>
        <source>A wonderful new note</source>
        <translation>Eine wundervolle neue Notiz</translation>
    </message>
    <message>
        <source>Keep calm and write something</source>
        <translation>Ruhe bewahren und etwas schreiben</translation>
    </message>
    <message>
        <source>Conflicted</source>
        <translation>Im Konflikt</translation>
    </message>
</context>
<context>
    <name>QBNoteTextView</name>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Notiz</translation>
    </message>
</context>
<context>
    <name>QBNotesTableViewController</name>
    <message>
        <source>Pin notes</source>
        <translation>Anheften von Notizen</translation>
    </message>
    <message>
        <source>Unpin notes</source>
        <translation>Lösen von Notizen</translation>
    </message>
    <message>
        <source>Archive notes</source>
        <translation>Archivieren von Notizen</translation>
    </message>
    <message>
        <source>Unarchive notes</source>
        <translation>Holen von Notizen aus dem Archiv</translation>
    </message>
    <message>
        <source>Restore notes</source>
        <translation>Wiederherstellen von Notizen</translation>
    </message>
    <message>
        <source>Delete notes</source>
        <translation>Löschen von Notizen</translation>
    </message>
    <message>
        <source>Are you sure you want to permanently delete the selected notes?</source>
        <translation>Möchten Sie die ausgewählten Notizen wirklich endgültig löschen?</translation>
    </message>
    <message>
        <source>Do not show this warning again.</source>
        <translation>Diese Warnung nicht mehr anzeigen.</translation>
    </message>
    <message>
        <source>Duplicate notes</source>
        <translation>Duplizieren von Notizen</translation>
    </message>
    <message>
        <source>Merge notes</source>
        <translation>Zusammenführen von Notizen</translation>
    </message>
    <message>
        <source>Unmerge notes</source>
        <translation>Trennen von Notizen</translation>
    </message>
    <message>
        <source>Remove tag</source>
        <translation>Entfernen des Schlagworts</translation>
    </message>
    <message>
        <source>Re-add tag</source>
        <translation>Zurückholen des Schlagworts</translation>
    </message>
    <message>
        <source>Are you sure you want to permanently delete all notes in the trash?</source>
        <translation>Möchten Sie alle Notizen im Papierkorb wirklich endgültig löschen?</translation>
    </message>
</context>
<context>
    <name>ShortTimeAgo</name>
    <message>
        <source>%1y</source>
        <translation>%1&#xa0;J.</translation>
    </message>
    <message>
        <source>%1M</source>
        <translation>%1&#xa0;Mon.</translation>
    </message>
    <message>
        <source>%1w</source>
        <translation>%1&#xa0;Wo.</translation>
    </message>
    <message>
        <source>%1d</source>
        <translation>%1&#xa0;T.</translation>
    </message>
    <message>
        <source>%1h</source>
        <translation>%1&#xa0;Std.</translation>
    </message>
    <message>
        <source>%1m</source>
        <translation>%1&#xa0;Min.</translation>
    </message>
    <message>
        <source>now</source>
        <translation>jetzt</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Notes</source>
        <translation>Notizen</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Archiv</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>Papierkorb</translation>
    </message>
    <message>
        <source>Untagged</source>
        <translation>Ohne Schlagwort</translation>
    </message>
    <message>
        <source>Todo</source>
        <translation>Aufgaben</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>Sample Notes</source>
        <translation>Beispielnotizen</translation>
    </message>
</context>
<context>
    <name>WindowFrontEnd</name>
    <message>
        <source>Another Quib has them open, and cannot be reached from here. Go on in its window, or quit it and start Quib again.</source>
        <translation>Ein anderes Quib hat sie geöffnet und ist von hier aus nicht zu erreichen. Arbeiten Sie in dessen Fenster weiter, oder beenden Sie es und starten Sie Quib neu.</translation>
    </message>
    <message>
        <source>Quib keeps its notes in this folder, and cannot write to it (%1). Make that possible, and start Quib again.</source>
        <translation>Quib bewahrt die Notizen in diesem Ordner auf und kann nicht in ihn schreiben (%1). Machen Sie das möglich und starten Sie Quib neu.</translation>
    </message>
    <message>
        <source>Your notes are in use</source>
        <translation>Ihre Notizen sind in Gebrauch</translation>
    </message>
    <message>
        <source>Your notes cannot be written to</source>
        <translation>Ihre Notizen können nicht geschrieben werden</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>Ordner anzeigen</translation>
    </message>
</context>
<context>
    <name>quib::AboutPage</name>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Notes in plain text, kept on this computer.</source>
        <translation>Notizen in reinem Text, die auf diesem Computer bleiben.</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy the versions</source>
        <translation>Versionsangaben kopieren</translation>
    </message>
    <message>
        <source>For a bug report</source>
        <translation>Für einen Fehlerbericht</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>Bibliotheken</translation>
    </message>
    <message>
        <source>Their licences in full come with their packages, in %1.</source>
        <translation>Ihre vollständigen Lizenzen liegen ihren Paketen bei, in %1.</translation>
    </message>
</context>
<context>
    <name>quib::AccessibleNoteTextView</name>
    <message>
        <source>Checks or unchecks the item at the caret</source>
        <translation>Hakt den Eintrag an der Schreibmarke ab oder nicht ab</translation>
    </message>
</context>
<context>
    <name>quib::AutomationPage</name>
    <message>
        <source>Actions</source>
        <translation>Aktionen</translation>
    </message>
    <message>
        <source>Scripts, launchers and other programs drive Quib by addresses. They can make notes, add to them, open them and search:</source>
        <translation>Skripte, Starter und andere Programme steuern Quib über Adressen. Sie können Notizen anlegen, ergänzen, öffnen und suchen:</translation>
    </message>
    <message>
        <source>Example of an address</source>
        <translation>Beispiel einer Adresse</translation>
    </message>
    <message>
        <source>Read More</source>
        <translation>Mehr lesen</translation>
    </message>
    <message>
        <source>All actions with examples</source>
        <translation>Alle Aktionen mit Beispielen</translation>
    </message>
    <message>
        <source>Token</source>
        <translation>Token</translation>
    </message>
    <message>
        <source>An action that lists your notes or tags answers only to who names this token. It lies in a file that you alone can read, and never leaves this computer. Give it to scripts that you trust.</source>
        <translation>Aktionen, die Notizen oder Schlagwörter auflisten, antworten nur, wenn dieser Token genannt wird. Er liegt in einer Datei, die nur Sie lesen können, und verlässt diesen Computer nie. Geben Sie ihn Skripten, denen Sie vertrauen.</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Anzeigen</translation>
    </message>
    <message>
        <source>Show the token</source>
        <translation>Token anzeigen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy the token</source>
        <translation>Token kopieren</translation>
    </message>
    <message>
        <source>Renew…</source>
        <translation>Erneuern …</translation>
    </message>
    <message>
        <source>Renew the token?</source>
        <translation>Token erneuern?</translation>
    </message>
    <message>
        <source>Renew</source>
        <translation>Erneuern</translation>
    </message>
    <message>
        <source>This is the new token.</source>
        <translation>Das ist der neue Token.</translation>
    </message>
    <message>
        <source>Renew the token</source>
        <translation>Token erneuern</translation>
    </message>
    <message>
        <source>Scripts that know the old one are shut out.</source>
        <translation>Skripte, die den alten kennen, werden ausgeschlossen.</translation>
    </message>
    <message>
        <source>Make a Token</source>
        <translation>Token erzeugen</translation>
    </message>
    <message>
        <source>There is no token yet</source>
        <translation>Es gibt noch keinen Token</translation>
    </message>
    <message>
        <source>Until there is one, no script reads a list of notes.</source>
        <translation>Bis dahin liest kein Skript eine Liste von Notizen.</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
    <message>
        <source>The token is on the clipboard.</source>
        <translation>Der Token ist in der Zwischenablage.</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Verbergen</translation>
    </message>
    <message>
        <source>Hide the token</source>
        <translation>Token verbergen</translation>
    </message>
</context>
<context>
    <name>quib::CompletionPopup</name>
    <message>
        <source>Completions</source>
        <translation>Vervollständigungen</translation>
    </message>
</context>
<context>
    <name>quib::DesktopIntegration</name>
    <message>
        <source>The desktop has Quib’s shortcuts now; its keyboard settings give them keys.</source>
        <translation>Der Desktop kennt jetzt Quibs Tastenkürzel; Tasten erhalten sie in seinen Tastatureinstellungen.</translation>
    </message>
    <message>
        <source>These keys reach Quib from everywhere: %1</source>
        <translation>Diese Tasten erreichen Quib aus allen Programmen: %1</translation>
    </message>
    <message>
        <source>The desktop has given Quib no shortcuts.</source>
        <translation>Der Desktop hat Quib keine Tastenkürzel gegeben.</translation>
    </message>
    <message>
        <source>This desktop lets no program take keys everywhere. Its keyboard settings can give a key to the command “%1”.</source>
        <translation>Dieser Desktop lässt kein Programm überall Tasten entgegennehmen. In seinen Tastatureinstellungen kann der Befehl „%1“ eine Taste erhalten.</translation>
    </message>
    <message>
        <source>Copy Command</source>
        <translation>Befehl kopieren</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>Schnelle Notiz</translation>
    </message>
    <message>
        <source>New Note</source>
        <translation>Neue Notiz</translation>
    </message>
    <message>
        <source>Search Notes</source>
        <translation>Notizen durchsuchen</translation>
    </message>
    <message>
        <source>Show Quib</source>
        <translation>Quib anzeigen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Write a quick note</source>
        <translation>Eine schnelle Notiz schreiben</translation>
    </message>
    <message>
        <source>Search the notes</source>
        <translation>Die Notizen durchsuchen</translation>
    </message>
</context>
<context>
    <name>quib::DetachedWindow</name>
    <message>
        <source>Close Window</source>
        <translation>Fenster schließen</translation>
    </message>
    <message>
        <source>Untitled note</source>
        <translation>Notiz ohne Titel</translation>
    </message>
    <message>
        <source>Keep Above Others</source>
        <translation>Im Vordergrund halten</translation>
    </message>
    <message>
        <source>All Commands…</source>
        <translation>Alle Befehle …</translation>
    </message>
    <message>
        <source>Find a command</source>
        <translation>Befehl suchen</translation>
    </message>
</context>
<context>
    <name>quib::EditorPage</name>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Sample of a note</source>
        <translation>Beispiel einer Notiz</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Schrift</translation>
    </message>
    <message>
        <source>Where this computer lacks a font, one of the same kind stands in.</source>
        <translation>Fehlt eine Schrift auf diesem Computer, vertritt sie eine ähnliche.</translation>
    </message>
    <message>
        <source> pt</source>
        <comment>points, behind a font size</comment>
        <translation>&#xa0;pt</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>Schriftgröße</translation>
    </message>
    <message>
        <source>Line height</source>
        <translation>Zeilenhöhe</translation>
    </message>
    <message>
        <source>× %1</source>
        <comment>a multiple</comment>
        <translation>×&#xa0;%1</translation>
    </message>
    <message>
        <source>Line width</source>
        <translation>Zeilenbreite</translation>
    </message>
    <message>
        <source>%1 em</source>
        <comment>width of a line</comment>
        <translation>%1&#xa0;em</translation>
    </message>
    <message>
        <source>Space between paragraphs</source>
        <translation>Abstand zwischen Absätzen</translation>
    </message>
    <message>
        <source>%1 em</source>
        <comment>space</comment>
        <translation>%1&#xa0;em</translation>
    </message>
    <message>
        <source>Use the Font’s Own</source>
        <translation>Die der Schrift verwenden</translation>
    </message>
    <message>
        <source>Sizes and spaces</source>
        <translation>Größen und Abstände</translation>
    </message>
    <message>
        <source>Every font comes with sizes that suit it.</source>
        <translation>Jede Schrift bringt passende Größen mit.</translation>
    </message>
    <message>
        <source>Markup</source>
        <translation>Auszeichnung</translation>
    </message>
    <message>
        <source>Notes are written in</source>
        <translation>Notizen sind geschrieben in</translation>
    </message>
    <message>
        <source>Your notes stay as they are written: this decides how their signs are read.</source>
        <translation>Ihre Notizen bleiben, wie sie geschrieben sind: Hier wird nur bestimmt, wie ihre Zeichen gelesen werden.</translation>
    </message>
    <message>
        <source>Quib’s markup</source>
        <translation>Quibs Auszeichnung</translation>
    </message>
    <message>
        <source>Markdown</source>
        <translation>Markdown</translation>
    </message>
    <message>
        <source>bold</source>
        <translation>fett</translation>
    </message>
    <message>
        <source>italic</source>
        <translation>kursiv</translation>
    </message>
    <message>
        <source>underlined</source>
        <translation>unterstrichen</translation>
    </message>
    <message>
        <source>struck</source>
        <translation>durchgestrichen</translation>
    </message>
    <message>
        <source>to do</source>
        <translation>zu tun</translation>
    </message>
    <message>
        <source>done</source>
        <translation>erledigt</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>Schreiben</translation>
    </message>
    <message>
        <source>Complete tags, links and languages</source>
        <translation>Schlagwörter, Links und Sprachen vervollständigen</translation>
    </message>
    <message>
        <source>A list of what fits appears while you type.</source>
        <translation>Beim Schreiben erscheint eine Liste dessen, was passt.</translation>
    </message>
    <message>
        <source>Fold completed to-dos</source>
        <translation>Erledigte Aufgaben einklappen</translation>
    </message>
    <message>
        <source>What is ticked off takes one short line until you open it.</source>
        <translation>Abgehaktes nimmt nur eine kurze Zeile ein, bis Sie es öffnen.</translation>
    </message>
    <message>
        <source>Typewriter scrolling</source>
        <translation>Schreibmaschinen-Bildlauf</translation>
    </message>
    <message>
        <source>The line you write in stays at the same height.</source>
        <translation>Die Zeile, in der Sie schreiben, bleibt auf gleicher Höhe.</translation>
    </message>
    <message>
        <source>Focus on the paragraph</source>
        <translation>Absatz im Fokus</translation>
    </message>
    <message>
        <source>All but the paragraph you write in stands back.</source>
        <translation>Alles außer dem Absatz, in dem Sie schreiben, tritt zurück.</translation>
    </message>
    <message>
        <source>Show the format bar</source>
        <translation>Formatleiste anzeigen</translation>
    </message>
    <message>
        <source>Check the spelling</source>
        <translation>Rechtschreibung prüfen</translation>
    </message>
    <message>
        <source>Misspelt words get a wavy line, in the languages of your dictionaries.</source>
        <translation>Falsch geschriebene Wörter erhalten eine Wellenlinie, in den Sprachen Ihrer Wörterbücher.</translation>
    </message>
    <message>
        <source>There is no dictionary on this computer. Packages of dictionaries are named %1.</source>
        <translation>Auf diesem Computer gibt es kein Wörterbuch. Pakete mit Wörterbüchern heißen %1.</translation>
    </message>
    <message>
        <source>Languages of the spelling</source>
        <translation>Sprachen der Rechtschreibung</translation>
    </message>
    <message>
        <source>Which of them a paragraph is in is told by its words.</source>
        <translation>In welcher davon ein Absatz steht, zeigen seine Wörter.</translation>
    </message>
    <message>
        <source>As the Desktop</source>
        <translation>Wie der Desktop</translation>
    </message>
    <message numerus="yes">
        <source>%n languages</source>
        <translation>
            <numerusform>%n Sprache</numerusform>
            <numerusform>%n Sprachen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::EditorPane</name>
    <message>
        <source>Note</source>
        <translation>Notiz</translation>
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
        <translation>In Notiz suchen</translation>
    </message>
    <message>
        <source>Find in note</source>
        <translation>In Notiz suchen</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Match Case</source>
        <translation>Groß-/Kleinschreibung beachten</translation>
    </message>
    <message>
        <source>Whole Words</source>
        <translation>Ganze Wörter</translation>
    </message>
    <message>
        <source>Regular Expression</source>
        <translation>Regulärer Ausdruck</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Rückwärts suchen</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Weitersuchen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Replace with</source>
        <translation>Ersetzen durch</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Replace All</source>
        <translation>Alle ersetzen</translation>
    </message>
    <message>
        <source>Not a valid pattern</source>
        <translation>Kein gültiges Muster</translation>
    </message>
    <message>
        <source>Too much to replace</source>
        <translation>Zu viel zu ersetzen</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message numerus="yes">
        <source>%n replaced</source>
        <translation>
            <numerusform>%n ersetzt</numerusform>
            <numerusform>%n ersetzt</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 of more than %2</source>
        <translation>%1 von mehr als %2</translation>
    </message>
</context>
<context>
    <name>quib::FormatBar</name>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>More Formats</source>
        <translation>Weitere Formate</translation>
    </message>
</context>
<context>
    <name>quib::GeneralPage</name>
    <message>
        <source>Lists</source>
        <translation>Listen</translation>
    </message>
    <message>
        <source>Sort notes by</source>
        <translation>Notizen sortieren nach</translation>
    </message>
    <message>
        <source>Date Changed</source>
        <translation>Änderungsdatum</translation>
    </message>
    <message>
        <source>Date Created</source>
        <translation>Erstellungsdatum</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Order of notes</source>
        <translation>Reihenfolge der Notizen</translation>
    </message>
    <message>
        <source>Pinned notes stand above all others.</source>
        <translation>Angeheftete Notizen stehen über allen anderen.</translation>
    </message>
    <message>
        <source>Descending</source>
        <translation>Absteigend</translation>
    </message>
    <message>
        <source>Ascending</source>
        <translation>Aufsteigend</translation>
    </message>
    <message>
        <source>Sort tags by</source>
        <translation>Schlagwörter sortieren nach</translation>
    </message>
    <message>
        <source>Number of Notes</source>
        <translation>Anzahl der Notizen</translation>
    </message>
    <message>
        <source>Order of tags</source>
        <translation>Reihenfolge der Schlagwörter</translation>
    </message>
    <message>
        <source>Symbols for tags</source>
        <translation>Symbole für Schlagwörter</translation>
    </message>
    <message>
        <source>Tags in the sidebar get a symbol that fits their name.</source>
        <translation>Schlagwörter in der Seitenleiste erhalten ein Symbol, das zu ihrem Namen passt.</translation>
    </message>
    <message>
        <source>Links</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Look up the titles of copied links</source>
        <translation>Titel kopierter Links nachschlagen</translation>
    </message>
    <message>
        <source>A web address on the clipboard gets the title of its page before you paste it. Quib asks that page for it.</source>
        <translation>Eine Webadresse in der Zwischenablage erhält den Titel ihrer Seite, bevor Sie sie einfügen. Quib fragt dazu die Seite ab.</translation>
    </message>
    <message>
        <source>On this computer</source>
        <translation>Auf diesem Computer</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>Ordner anzeigen</translation>
    </message>
    <message>
        <source>Show the folder of the notes</source>
        <translation>Ordner der Notizen anzeigen</translation>
    </message>
    <message>
        <source>Notes and attachments</source>
        <translation>Notizen und Anhänge</translation>
    </message>
    <message>
        <source>Write a log file</source>
        <translation>Protokolldatei schreiben</translation>
    </message>
    <message>
        <source>For finding out what went wrong. The log has no text of your notes.</source>
        <translation>Um herauszufinden, was schiefging. Das Protokoll enthält keinen Text Ihrer Notizen.</translation>
    </message>
    <message>
        <source>Show the folder of the logs</source>
        <translation>Ordner der Protokolle anzeigen</translation>
    </message>
    <message>
        <source>Logs</source>
        <translation>Protokolle</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>Neu beginnen</translation>
    </message>
    <message>
        <source>Reset…</source>
        <translation>Zurücksetzen …</translation>
    </message>
    <message>
        <source>Reset all preferences?</source>
        <translation>Alle Einstellungen zurücksetzen?</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Reset all preferences</source>
        <translation>Alle Einstellungen zurücksetzen</translation>
    </message>
    <message>
        <source>Themes, fonts, lists and writing go back to how they were. No note changes.</source>
        <translation>Themen, Schriften, Listen und Schreiben werden wie am Anfang. Keine Notiz ändert sich.</translation>
    </message>
</context>
<context>
    <name>quib::InformationPanel</name>
    <message>
        <source>Note Information</source>
        <translation>Notizinformationen</translation>
    </message>
    <message>
        <source>Words</source>
        <translation>Wörter</translation>
    </message>
    <message>
        <source>Characters</source>
        <translation>Zeichen</translation>
    </message>
    <message>
        <source>Paragraphs</source>
        <translation>Absätze</translation>
    </message>
    <message>
        <source>Reading time</source>
        <translation>Lesezeit</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Erstellt</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Notes That Link Here</source>
        <translation>Notizen mit Link hierher</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1&#xa0;Min.</translation>
    </message>
    <message>
        <source>Headings of the note stand here.</source>
        <translation>Hier stehen die Überschriften der Notiz.</translation>
    </message>
    <message>
        <source>No note links here yet.</source>
        <translation>Noch keine Notiz verweist hierher.</translation>
    </message>
    <message>
        <source>%1, heading %2</source>
        <translation>%1, Überschrift %2</translation>
    </message>
</context>
<context>
    <name>quib::InlineQuestion</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>quib::MessageBar</name>
    <message>
        <source>Close the message</source>
        <translation>Meldung schließen</translation>
    </message>
</context>
<context>
    <name>quib::NoteListModel</name>
    <message>
        <source>Untitled note</source>
        <translation>Notiz ohne Titel</translation>
    </message>
    <message>
        <source>pinned</source>
        <translation>angeheftet</translation>
    </message>
    <message>
        <source>in conflict with another version</source>
        <translation>im Konflikt mit einer anderen Fassung</translation>
    </message>
    <message>
        <source>%1 of %2 done</source>
        <translation>%1 von %2 erledigt</translation>
    </message>
</context>
<context>
    <name>quib::NoteListView</name>
    <message>
        <source>Notes</source>
        <translation>Notizen</translation>
    </message>
    <message numerus="yes">
        <source>%n notes</source>
        <translation>
            <numerusform>%n Notiz</numerusform>
            <numerusform>%n Notizen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::NoteTextViewSpelling</name>
    <message>
        <source>Looking for Words…</source>
        <translation>Wörter werden gesucht …</translation>
    </message>
    <message>
        <source>Add “%1” to the Dictionary</source>
        <translation>„%1“ zum Wörterbuch hinzufügen</translation>
    </message>
    <message>
        <source>Ignore “%1”</source>
        <translation>„%1“ ignorieren</translation>
    </message>
    <message>
        <source>No Other Words Found</source>
        <translation>Keine anderen Wörter gefunden</translation>
    </message>
</context>
<context>
    <name>quib::OverlayScrollBar</name>
    <message>
        <source>Scroll bar</source>
        <translation>Bildlaufleiste</translation>
    </message>
</context>
<context>
    <name>quib::PreferencesWindow</name>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Pages of the preferences</source>
        <translation>Seiten der Einstellungen</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Editor</source>
        <translation>Editor</translation>
    </message>
    <message>
        <source>Themes</source>
        <translation>Themen</translation>
    </message>
    <message>
        <source>Automation</source>
        <translation>Automatisierung</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Info</translation>
    </message>
</context>
<context>
    <name>quib::QuickNoteWindow</name>
    <message>
        <source>Saved as you type. Escape closes.</source>
        <translation>Wird beim Schreiben gespeichert. Esc schließt.</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>Schnelle Notiz</translation>
    </message>
    <message>
        <source>Open in Quib</source>
        <translation>In Quib öffnen</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>Fenster schließen</translation>
    </message>
    <message>
        <source>Go on in the main window (Ctrl+O)</source>
        <translation>Im Hauptfenster weiterschreiben (Strg+O)</translation>
    </message>
</context>
<context>
    <name>quib::SavingMessage</name>
    <message>
        <source>The file of your notes is damaged, and parts of it cannot be read. Nothing is written to it any more. Quit Quib, and run “quibctl check” in a terminal to learn what is whole.</source>
        <translation>Die Datei mit Ihren Notizen ist beschädigt und teilweise nicht lesbar. Es wird nichts mehr in sie geschrieben. Beenden Sie Quib und führen Sie „quibctl check“ in einem Terminal aus, um zu erfahren, was heil ist.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: the disk is full. Make some room on it; Quib keeps trying.</source>
        <translation>Ihre Notizen können nicht gespeichert werden: Der Datenträger ist voll. Schaffen Sie etwas Platz; Quib versucht es weiter.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: their folder cannot be written to. Quib keeps trying.</source>
        <translation>Ihre Notizen können nicht gespeichert werden: In ihren Ordner kann nicht geschrieben werden. Quib versucht es weiter.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: another program does not let go of them. Quib keeps trying.</source>
        <translation>Ihre Notizen können nicht gespeichert werden: Ein anderes Programm gibt sie nicht frei. Quib versucht es weiter.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved. Quib keeps trying. The reason: %1</source>
        <translation>Ihre Notizen können nicht gespeichert werden. Quib versucht es weiter. Der Grund: %1</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>%1 What you wrote last may be lost if you quit now.</source>
        <comment>%1 is one or more sentences</comment>
        <translation>%1 Wenn Sie jetzt beenden, kann verloren gehen, was Sie zuletzt geschrieben haben.</translation>
    </message>
    <message>
        <source>Quit Without Saving</source>
        <translation>Beenden ohne zu speichern</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>quib::SearchField</name>
    <message>
        <source>notes with something left to do</source>
        <translation>Notizen mit offenen Aufgaben</translation>
    </message>
    <message>
        <source>notes where everything is done</source>
        <translation>Notizen, in denen alles erledigt ist</translation>
    </message>
    <message>
        <source>notes with to-dos</source>
        <translation>Notizen mit Aufgaben</translation>
    </message>
    <message>
        <source>changed today</source>
        <translation>heute geändert</translation>
    </message>
    <message>
        <source>changed yesterday</source>
        <translation>gestern geändert</translation>
    </message>
    <message>
        <source>changed in the last seven days</source>
        <translation>in den letzten sieben Tagen geändert</translation>
    </message>
    <message>
        <source>changed on a day: @date(2024-12-31)</source>
        <translation>an einem Tag geändert: @date(2024-12-31)</translation>
    </message>
    <message>
        <source>created on a day: @cdate(2024-12-31)</source>
        <translation>an einem Tag erstellt: @cdate(2024-12-31)</translation>
    </message>
    <message>
        <source>notes with pictures</source>
        <translation>Notizen mit Bildern</translation>
    </message>
    <message>
        <source>notes with files</source>
        <translation>Notizen mit Dateien</translation>
    </message>
    <message>
        <source>notes with pictures or files</source>
        <translation>Notizen mit Bildern oder Dateien</translation>
    </message>
    <message>
        <source>notes with code</source>
        <translation>Notizen mit Code</translation>
    </message>
    <message>
        <source>notes with tags</source>
        <translation>Notizen mit Schlagwörtern</translation>
    </message>
    <message>
        <source>notes without tags</source>
        <translation>Notizen ohne Schlagwörter</translation>
    </message>
    <message>
        <source>Search notes</source>
        <translation>Notizen durchsuchen</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Words, &quot;phrases&quot; and #tags; a minus excludes; @ offers more</source>
        <translation>Wörter, &quot;Wendungen&quot; und #Schlagwörter; ein Minus schließt aus; @ bietet mehr</translation>
    </message>
    <message>
        <source>End the search</source>
        <translation>Suche beenden</translation>
    </message>
    <message>
        <source>word</source>
        <translation>Wort</translation>
    </message>
    <message>
        <source>notes with the word, or with a word that has it in it</source>
        <translation>Notizen mit dem Wort oder mit einem, das es enthält</translation>
    </message>
    <message>
        <source>&quot;two words&quot;</source>
        <translation>&quot;zwei Wörter&quot;</translation>
    </message>
    <message>
        <source>notes with just these words, one behind the other</source>
        <translation>Notizen mit genau diesen Wörtern hintereinander</translation>
    </message>
    <message>
        <source>-word</source>
        <translation>-Wort</translation>
    </message>
    <message>
        <source>notes without the word</source>
        <translation>Notizen ohne das Wort</translation>
    </message>
    <message>
        <source>#tag</source>
        <translation>#Schlagwort</translation>
    </message>
    <message>
        <source>notes with the tag in their text</source>
        <translation>Notizen mit dem Schlagwort im Text</translation>
    </message>
</context>
<context>
    <name>quib::ShortcutsPage</name>
    <message>
        <source>or</source>
        <comment>between two shortcuts</comment>
        <translation>oder</translation>
    </message>
    <message>
        <source>No shortcut matches.</source>
        <translation>Kein Tastenkürzel passt.</translation>
    </message>
    <message>
        <source>Search commands and keys</source>
        <translation>Befehle und Tasten suchen</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
</context>
<context>
    <name>quib::SidebarModel</name>
    <message>
        <source>Tags</source>
        <translation>Schlagwörter</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n note(s)</source>
        <translation>
            <numerusform>%1, %n Notiz</numerusform>
            <numerusform>%1, %n Notizen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::SidebarView</name>
    <message>
        <source>Lists and tags</source>
        <translation>Listen und Schlagwörter</translation>
    </message>
</context>
<context>
    <name>quib::SpokenNoteText</name>
    <message>
        <source>checked item</source>
        <translation>abgehakter Eintrag</translation>
    </message>
    <message>
        <source>unchecked item</source>
        <translation>offener Eintrag</translation>
    </message>
    <message>
        <source>heading %1</source>
        <translation>Überschrift %1</translation>
    </message>
    <message>
        <source>picture %1</source>
        <translation>Bild %1</translation>
    </message>
    <message>
        <source>file %1</source>
        <translation>Datei %1</translation>
    </message>
    <message>
        <source>separator</source>
        <translation>Trennlinie</translation>
    </message>
    <message>
        <source>folded text</source>
        <translation>eingeklappter Text</translation>
    </message>
    <message>
        <source>link to a note</source>
        <translation>Link zu einer Notiz</translation>
    </message>
    <message>
        <source>link</source>
        <translation>Link</translation>
    </message>
</context>
<context>
    <name>quib::SymbolPicker</name>
    <message>
        <source>Symbol of the tag</source>
        <translation>Symbol des Schlagworts</translation>
    </message>
    <message>
        <source>Symbols</source>
        <translation>Symbole</translation>
    </message>
    <message>
        <source>By the Tag’s Name</source>
        <translation>Nach dem Namen des Schlagworts</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>Schlagwort</translation>
    </message>
    <message>
        <source>Animal</source>
        <translation>Tier</translation>
    </message>
    <message>
        <source>Art</source>
        <translation>Kunst</translation>
    </message>
    <message>
        <source>Book</source>
        <translation>Buch</translation>
    </message>
    <message>
        <source>Bug</source>
        <translation>Käfer</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Kalender</translation>
    </message>
    <message>
        <source>Car</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>Film</source>
        <translation>Film</translation>
    </message>
    <message>
        <source>Food</source>
        <translation>Essen</translation>
    </message>
    <message>
        <source>Game</source>
        <translation>Spiel</translation>
    </message>
    <message>
        <source>Gift</source>
        <translation>Geschenk</translation>
    </message>
    <message>
        <source>Health</source>
        <translation>Gesundheit</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Zuhause</translation>
    </message>
    <message>
        <source>Idea</source>
        <translation>Idee</translation>
    </message>
    <message>
        <source>Journal</source>
        <translation>Tagebuch</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>Link</translation>
    </message>
    <message>
        <source>Money</source>
        <translation>Geld</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Musik</translation>
    </message>
    <message>
        <source>People</source>
        <translation>Leute</translation>
    </message>
    <message>
        <source>Photo</source>
        <translation>Foto</translation>
    </message>
    <message>
        <source>Plant</source>
        <translation>Pflanze</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Projekt</translation>
    </message>
    <message>
        <source>School</source>
        <translation>Schule</translation>
    </message>
    <message>
        <source>Science</source>
        <translation>Wissenschaft</translation>
    </message>
    <message>
        <source>Shopping</source>
        <translation>Einkauf</translation>
    </message>
    <message>
        <source>Sport</source>
        <translation>Sport</translation>
    </message>
    <message>
        <source>To-do</source>
        <translation>Aufgabe</translation>
    </message>
    <message>
        <source>Travel</source>
        <translation>Reise</translation>
    </message>
    <message>
        <source>Work</source>
        <translation>Arbeit</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>Schreiben</translation>
    </message>
</context>
<context>
    <name>quib::ThemeGallery</name>
    <message>
        <source>Themes</source>
        <translation>Themen</translation>
    </message>
</context>
<context>
    <name>quib::ThemeGalleryModel</name>
    <message>
        <source>%1, in use</source>
        <comment>theme</comment>
        <translation>%1, in Gebrauch</translation>
    </message>
    <message>
        <source>%1, in use when the desktop is light</source>
        <comment>theme</comment>
        <translation>%1, bei hellem Desktop in Gebrauch</translation>
    </message>
    <message>
        <source>%1, in use when the desktop is dark</source>
        <comment>theme</comment>
        <translation>%1, bei dunklem Desktop in Gebrauch</translation>
    </message>
</context>
<context>
    <name>quib::ThemePreview</name>
    <message>
        <source>%1Low tide%2 is at nine. Take the %3slow path%4 along the harbour.</source>
        <translation>%1Ebbe%2 ist um neun. Nimm den %3langsamen Weg%4 am Hafen entlang.</translation>
    </message>
    <message>
        <source>A day by the sea</source>
        <translation>Ein Tag am Meer</translation>
    </message>
    <message>
        <source>Pack the ::blue:: bag</source>
        <translation>Die ::blaue:: Tasche packen</translation>
    </message>
    <message>
        <source>Buy bread and [[Cheese]]</source>
        <translation>Brot und [[Käse]] kaufen</translation>
    </message>
    <message>
        <source>The sea is never late.</source>
        <translation>Das Meer kommt nie zu spät.</translation>
    </message>
    <message>
        <source>travel/coast</source>
        <translation>reisen/küste</translation>
    </message>
</context>
<context>
    <name>quib::ThemesPage</name>
    <message>
        <source>Choose the theme for a light desktop</source>
        <translation>Thema für den hellen Desktop wählen</translation>
    </message>
    <message>
        <source>Choose the theme for a dark desktop</source>
        <translation>Thema für den dunklen Desktop wählen</translation>
    </message>
    <message>
        <source>Light desktop: %1</source>
        <translation>Heller Desktop: %1</translation>
    </message>
    <message>
        <source>Dark desktop: %1</source>
        <translation>Dunkler Desktop: %1</translation>
    </message>
    <message>
        <source>Quib follows the desktop, which is dark at the moment.</source>
        <translation>Quib folgt dem Desktop, der gerade dunkel ist.</translation>
    </message>
    <message>
        <source>Quib follows the desktop, which is light at the moment.</source>
        <translation>Quib folgt dem Desktop, der gerade hell ist.</translation>
    </message>
</context>
</TS>
