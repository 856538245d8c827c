<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it" sourcelanguage="en">
<context>
    <name>QBAppDelegate</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>e un altro</numerusform>
            <numerusform>e altri %n</numerusform>
        </translation>
    </message>
    <message>
        <source>These files cannot be opened</source>
        <translation>Impossibile aprire questi file</translation>
    </message>
    <message>
        <source>This version of Quib opens pictures only. Nothing was imported from:
%1</source>
        <translation>Questa versione di Quib apre solo immagini. Non è stato importato nulla da:
%1</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>These pictures could not be copied</source>
        <translation>Impossibile copiare queste immagini</translation>
    </message>
    <message>
        <source>Something went wrong</source>
        <translation>Qualcosa è andato storto</translation>
    </message>
    <message>
        <source>Just a moment and Quib will be ready!</source>
        <translation>Un attimo e Quib sarà pronto!</translation>
    </message>
    <message>
        <source>Quib is currently speeding up your notes and migrating the database to a new version.
We highly suggest not to exit from Quib during the whole process.</source>
        <translation>Quib sta velocizzando le tue note e convertendo l’archivio a una nuova versione.
È vivamente consigliato non uscire da Quib durante l’operazione.</translation>
    </message>
    <message>
        <source>It was not possible to migrate your database to the new version. Don&apos;t worry your notes are safe, please contact the support team using the &apos;Contact Support&apos; button below and they will help you.</source>
        <translation>Non è stato possibile convertire l’archivio alla nuova versione. Niente paura, le tue note sono al sicuro: contatta l’assistenza con il pulsante «Contatta l’assistenza» qui sotto.</translation>
    </message>
    <message>
        <source>Contact Support</source>
        <translation>Contatta l’assistenza</translation>
    </message>
    <message>
        <source>Your notes could not be opened</source>
        <translation>Non è stato possibile aprire le note</translation>
    </message>
    <message>
        <source>The file that holds them is damaged, or is no file of Quib&apos;s. Nothing was changed. Put a copy from a backup in its place, and start Quib again.</source>
        <translation>Il file che le contiene è danneggiato o non è un file di Quib. Non è stato modificato nulla. Metti al suo posto una copia di backup e riavvia Quib.</translation>
    </message>
    <message>
        <source>Nothing was changed. The reason: %1</source>
        <translation>Non è stato modificato nulla. Il motivo: %1</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Esci</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>Mostra la cartella</translation>
    </message>
</context>
<context>
    <name>QBMainWindowController</name>
    <message>
        <source>New Note</source>
        <translation>Nuova nota</translation>
    </message>
    <message>
        <source>New Note in New Window</source>
        <translation>Nuova nota in una nuova finestra</translation>
    </message>
    <message>
        <source>Open Quickly…</source>
        <translation>Apri rapidamente…</translation>
    </message>
    <message>
        <source>Open in New Window</source>
        <translation>Apri in una nuova finestra</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Duplica</translation>
    </message>
    <message>
        <source>Merge</source>
        <translation>Unisci</translation>
    </message>
    <message>
        <source>Pin to Top</source>
        <translation>Fissa in alto</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Archivia</translation>
    </message>
    <message>
        <source>Move to Trash</source>
        <translation>Sposta nel cestino</translation>
    </message>
    <message>
        <source>Put Back</source>
        <translation>Ripristina</translation>
    </message>
    <message>
        <source>Copy Link to Note</source>
        <translation>Copia il collegamento alla nota</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>Chiudi la finestra</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Esci</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Ripeti</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Taglia</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copia</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Incolla</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Seleziona tutto</translation>
    </message>
    <message>
        <source>Search Notes</source>
        <translation>Cerca nelle note</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <translation>Preferenze…</translation>
    </message>
    <message>
        <source>Rename Tag</source>
        <translation>Rinomina l’etichetta</translation>
    </message>
    <message>
        <source>Delete Tag</source>
        <translation>Elimina l’etichetta</translation>
    </message>
    <message>
        <source>Remove Tag from Notes</source>
        <translation>Togli l’etichetta dalle note</translation>
    </message>
    <message>
        <source>Sidebar, Notes and Editor</source>
        <translation>Barra laterale, note ed editor</translation>
    </message>
    <message>
        <source>Notes and Editor</source>
        <translation>Note ed editor</translation>
    </message>
    <message>
        <source>Editor Only</source>
        <translation>Solo l’editor</translation>
    </message>
    <message>
        <source>Show or Hide the Sidebar</source>
        <translation>Mostra o nascondi la barra laterale</translation>
    </message>
    <message>
        <source>Full Screen</source>
        <translation>Schermo intero</translation>
    </message>
    <message>
        <source>Next Note</source>
        <translation>Nota successiva</translation>
    </message>
    <message>
        <source>Previous Note</source>
        <translation>Nota precedente</translation>
    </message>
    <message>
        <source>Go to Notes</source>
        <translation>Vai alle note</translation>
    </message>
    <message>
        <source>Go to Untagged</source>
        <translation>Vai a «Senza etichetta»</translation>
    </message>
    <message>
        <source>Go to Todo</source>
        <translation>Vai a «Da fare»</translation>
    </message>
    <message>
        <source>Go to Today</source>
        <translation>Vai a «Oggi»</translation>
    </message>
    <message>
        <source>Go to Trash</source>
        <translation>Vai al cestino</translation>
    </message>
    <message>
        <source>Keyboard to Sidebar</source>
        <translation>Tastiera alla barra laterale</translation>
    </message>
    <message>
        <source>Keyboard to Notes</source>
        <translation>Tastiera alle note</translation>
    </message>
    <message>
        <source>Keyboard to Editor</source>
        <translation>Tastiera all’editor</translation>
    </message>
    <message>
        <source>All Commands…</source>
        <translation>Tutti i comandi…</translation>
    </message>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Scorciatoie da tastiera</translation>
    </message>
    <message>
        <source>About Quib</source>
        <translation>Informazioni su Quib</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Modifica</translation>
    </message>
    <message>
        <source>&amp;Note</source>
        <translation>&amp;Nota</translation>
    </message>
    <message>
        <source>&amp;Tag</source>
        <translation>&amp;Etichetta</translation>
    </message>
    <message>
        <source>F&amp;ormat</source>
        <translation>F&amp;ormato</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>Visuali&amp;zza</translation>
    </message>
    <message>
        <source>Sort Notes</source>
        <translation>Ordina le note</translation>
    </message>
    <message>
        <source>Theme</source>
        <translation>Tema</translation>
    </message>
    <message>
        <source>&amp;Go</source>
        <translation>&amp;Vai</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Aiuto</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Altro</translation>
    </message>
    <message>
        <source>Commands for this note</source>
        <translation>Comandi per questa nota</translation>
    </message>
    <message>
        <source>Date Changed</source>
        <translation>Data di modifica</translation>
    </message>
    <message>
        <source>Date Created</source>
        <translation>Data di creazione</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titolo</translation>
    </message>
    <message>
        <source>Ascending</source>
        <translation>Crescente</translation>
    </message>
    <message>
        <source>Descending</source>
        <translation>Decrescente</translation>
    </message>
    <message>
        <source>Empty Trash…</source>
        <translation>Svuota il cestino…</translation>
    </message>
    <message>
        <source>The tag #%1 is #%2 now.</source>
        <translation>L’etichetta #%1 ora è #%2.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
    <message numerus="yes">
        <source>%n link(s) copied.</source>
        <translation>
            <numerusform>%n collegamento copiato.</numerusform>
            <numerusform>%n collegamenti copiati.</numerusform>
        </translation>
    </message>
    <message>
        <source>Untitled note</source>
        <translation>Nota senza titolo</translation>
    </message>
    <message>
        <source>Open a note by its title</source>
        <translation>Apri una nota dal titolo</translation>
    </message>
    <message>
        <source>New note “%1”</source>
        <translation>Nuova nota «%1»</translation>
    </message>
    <message>
        <source>Find a command</source>
        <translation>Trova un comando</translation>
    </message>
    <message>
        <source>Theme: %1</source>
        <translation>Tema: %1</translation>
    </message>
    <message>
        <source>current</source>
        <translation>attuale</translation>
    </message>
    <message>
        <source>Quib</source>
        <translation>Quib</translation>
    </message>
    <message>
        <source>“%1” could not be taken into the note.</source>
        <translation>Impossibile inserire «%1» nella nota.</translation>
    </message>
    <message>
        <source>No note matches “%1”.</source>
        <translation>Nessuna nota corrisponde a «%1».</translation>
    </message>
    <message>
        <source>The trash is empty.</source>
        <translation>Il cestino è vuoto.</translation>
    </message>
    <message>
        <source>No notes here yet.</source>
        <translation>Qui non ci sono ancora note.</translation>
    </message>
    <message numerus="yes">
        <source>%n notes selected</source>
        <translation>
            <numerusform>%n nota selezionata</numerusform>
            <numerusform>%n note selezionate</numerusform>
        </translation>
    </message>
    <message>
        <source>Drag them onto a tag, or choose a command from their menu.</source>
        <translation>Trascinale su un’etichetta o scegli un comando dal loro menu.</translation>
    </message>
    <message>
        <source>Write your first note</source>
        <translation>Scrivi la tua prima nota</translation>
    </message>
    <message>
        <source>Give it a title, tag it with a #word, tick things off with a dash at the start of a line. Everything is saved as you type.</source>
        <translation>Dalle un titolo, etichettala con una #parola, spunta le cose da fare con un trattino a inizio riga. Tutto viene salvato mentre scrivi.</translation>
    </message>
    <message>
        <source>No note selected</source>
        <translation>Nessuna nota selezionata</translation>
    </message>
    <message>
        <source>Choose one from the list, or press Ctrl+O to open it by its title.</source>
        <translation>Scegline una dall’elenco o premi Ctrl+O per aprirla dal titolo.</translation>
    </message>
    <message>
        <source>Unpin</source>
        <translation>Non fissare più</translation>
    </message>
    <message>
        <source>Unarchive</source>
        <translation>Togli dall’archivio</translation>
    </message>
    <message>
        <source>Delete Permanently…</source>
        <translation>Elimina definitivamente…</translation>
    </message>
    <message>
        <source>In the trash</source>
        <translation>Nel cestino</translation>
    </message>
    <message>
        <source>Archived</source>
        <translation>Archiviata</translation>
    </message>
    <message>
        <source>Edited today, %1</source>
        <translation>Modificata oggi alle %1</translation>
    </message>
    <message>
        <source>HH:mm</source>
        <comment>time of day</comment>
        <translation>HH:mm</translation>
    </message>
    <message>
        <source>Edited %1</source>
        <translation>Modificata il %1</translation>
    </message>
    <message>
        <source>Undo %1</source>
        <translation>Annulla: %1</translation>
    </message>
    <message>
        <source>Redo %1</source>
        <translation>Ripeti: %1</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>Nota rapida</translation>
    </message>
    <message>
        <source>What Can Be Searched For…</source>
        <translation>Che cosa si può cercare…</translation>
    </message>
    <message>
        <source>Choose Symbol…</source>
        <translation>Scegli un simbolo…</translation>
    </message>
    <message>
        <source>Icon in the Tray</source>
        <translation>Icona nell’area di notifica</translation>
    </message>
    <message>
        <source>Shortcuts from Everywhere…</source>
        <translation>Scorciatoie da ogni programma…</translation>
    </message>
    <message>
        <source>What can be searched for</source>
        <translation>Che cosa si può cercare</translation>
    </message>
    <message numerus="yes">
        <source>The tag #%1 was taken out of %n note(s).</source>
        <translation>
            <numerusform>L’etichetta #%1 è stata tolta da %n nota.</numerusform>
            <numerusform>L’etichetta #%1 è stata tolta da %n note.</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose Symbol</source>
        <translation>Scegli un simbolo</translation>
    </message>
    <message>
        <source>“%1” could not be written.</source>
        <translation>Impossibile scrivere «%1».</translation>
    </message>
    <message numerus="yes">
        <source>%n found</source>
        <translation>
            <numerusform>%n trovata</numerusform>
            <numerusform>%n trovate</numerusform>
        </translation>
    </message>
    <message>
        <source>Print…</source>
        <translation>Stampa…</translation>
    </message>
    <message>
        <source>Print Note</source>
        <translation>Stampa la nota</translation>
    </message>
    <message>
        <source>“%1” could not be printed.</source>
        <translation>Impossibile stampare «%1».</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Nessun risultato</translation>
    </message>
    <message>
        <source>Try fewer words, or look in all notes.</source>
        <translation>Prova con meno parole o cerca in tutte le note.</translation>
    </message>
    <message>
        <source>These notes could not be read.</source>
        <translation>Non è stato possibile leggere queste note.</translation>
    </message>
    <message>
        <source>Your notes could not be read</source>
        <translation>Non è stato possibile leggere le note</translation>
    </message>
    <message>
        <source>Not saved yet</source>
        <translation>Non ancora salvata</translation>
    </message>
    <message>
        <source>The note was put into the trash elsewhere.</source>
        <translation>La nota è stata messa nel cestino altrove.</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n Notes</source>
        <translation>
            <numerusform>Elimina %n nota</numerusform>
            <numerusform>Elimina %n note</numerusform>
        </translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>Elimina «%1»</translation>
    </message>
    <message>
        <source>The note was deleted elsewhere. What was not saved yet is in a new note.</source>
        <translation>La nota è stata eliminata altrove. Ciò che non era ancora salvato è in una nuova nota.</translation>
    </message>
    <message>
        <source>The note was deleted elsewhere.</source>
        <translation>La nota è stata eliminata altrove.</translation>
    </message>
</context>
<context>
    <name>QBNoteEditorViewController</name>
    <message>
        <source>Attach Files</source>
        <translation>Allega file</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Grassetto</translation>
    </message>
    <message>
        <source>Italic</source>
        <translation>Corsivo</translation>
    </message>
    <message>
        <source>Underline</source>
        <translation>Sottolineato</translation>
    </message>
    <message>
        <source>Strikethrough</source>
        <translation>Barrato</translation>
    </message>
    <message>
        <source>Highlight</source>
        <translation>Evidenziato</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>Codice</translation>
    </message>
    <message>
        <source>Bulleted List</source>
        <translation>Elenco puntato</translation>
    </message>
    <message>
        <source>Numbered List</source>
        <translation>Elenco numerato</translation>
    </message>
    <message>
        <source>To-do</source>
        <translation>Cosa da fare</translation>
    </message>
    <message>
        <source>Quote</source>
        <translation>Citazione</translation>
    </message>
    <message>
        <source>Code Block</source>
        <translation>Blocco di codice</translation>
    </message>
    <message>
        <source>Line Separator</source>
        <translation>Linea di separazione</translation>
    </message>
    <message>
        <source>Heading %1</source>
        <translation>Titolo %1</translation>
    </message>
    <message>
        <source>No Heading</source>
        <translation>Nessun titolo</translation>
    </message>
    <message>
        <source>Complete To-do</source>
        <translation>Completa la cosa da fare</translation>
    </message>
    <message>
        <source>Indent</source>
        <translation>Aumenta rientro</translation>
    </message>
    <message>
        <source>Outdent</source>
        <translation>Riduci rientro</translation>
    </message>
    <message>
        <source>Move Line Up</source>
        <translation>Sposta la riga in su</translation>
    </message>
    <message>
        <source>Move Line Down</source>
        <translation>Sposta la riga in giù</translation>
    </message>
    <message>
        <source>Fold Completed To-dos</source>
        <translation>Comprimi le cose fatte</translation>
    </message>
    <message>
        <source>Unfold Completed To-dos</source>
        <translation>Espandi le cose fatte</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>Collegamento</translation>
    </message>
    <message>
        <source>Link to Note</source>
        <translation>Collegamento a una nota</translation>
    </message>
    <message>
        <source>Attach Files…</source>
        <translation>Allega file…</translation>
    </message>
    <message>
        <source>Paste as Plain Text</source>
        <translation>Incolla come testo semplice</translation>
    </message>
    <message>
        <source>Complete Tag or Link</source>
        <translation>Completa etichetta o collegamento</translation>
    </message>
    <message>
        <source>Find in Note…</source>
        <translation>Trova nella nota…</translation>
    </message>
    <message>
        <source>Find and Replace…</source>
        <translation>Trova e sostituisci…</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Trova successivo</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Trova precedente</translation>
    </message>
    <message>
        <source>Typewriter Scrolling</source>
        <translation>Scorrimento a macchina da scrivere</translation>
    </message>
    <message>
        <source>Focus on Paragraph</source>
        <translation>Concentrazione sul paragrafo</translation>
    </message>
    <message>
        <source>Format Bar</source>
        <translation>Barra di formattazione</translation>
    </message>
    <message>
        <source>Note Information</source>
        <translation>Informazioni sulla nota</translation>
    </message>
    <message>
        <source>Heading</source>
        <translation>Titolo</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Immagine</translation>
    </message>
    <message>
        <source>Paste as Code Block</source>
        <translation>Incolla come blocco di codice</translation>
    </message>
    <message>
        <source>Copy as Text</source>
        <translation>Copia come testo</translation>
    </message>
    <message>
        <source>Copy as Text Without Tags</source>
        <translation>Copia come testo senza etichette</translation>
    </message>
    <message>
        <source>Note From Selection</source>
        <translation>Nota dalla selezione</translation>
    </message>
    <message>
        <source>Open Link</source>
        <translation>Apri il collegamento</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Ingrandisci</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Riduci</translation>
    </message>
    <message>
        <source>Actual Size</source>
        <translation>Dimensione reale</translation>
    </message>
    <message>
        <source>Wider Lines</source>
        <translation>Righe più larghe</translation>
    </message>
    <message>
        <source>Narrower Lines</source>
        <translation>Righe più strette</translation>
    </message>
    <message>
        <source>Copy As</source>
        <translation>Copia come</translation>
    </message>
    <message>
        <source>Paste As</source>
        <translation>Incolla come</translation>
    </message>
    <message>
        <source>Show Notes with #%1</source>
        <translation>Mostra le note con #%1</translation>
    </message>
    <message>
        <source>Open Note</source>
        <translation>Apri la nota</translation>
    </message>
    <message>
        <source>Copy Link</source>
        <translation>Copia il collegamento</translation>
    </message>
    <message>
        <source>Edit Link</source>
        <translation>Modifica il collegamento</translation>
    </message>
    <message>
        <source>Unfold</source>
        <translation>Espandi</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Apri</translation>
    </message>
    <message>
        <source>Save As…</source>
        <translation>Salva con nome…</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>Mostra nella cartella</translation>
    </message>
    <message>
        <source>Save Attachment</source>
        <translation>Salva l’allegato</translation>
    </message>
    <message>
        <source>Keyboard to Next Part</source>
        <translation>Tastiera alla parte successiva</translation>
    </message>
    <message>
        <source>Keyboard to Previous Part</source>
        <translation>Tastiera alla parte precedente</translation>
    </message>
</context>
<context>
    <name>QBNoteTableCellTextRenderer</name>
    <message>
        <source>A wonderful new note</source>
        <translation>Una splendida nuova nota</translation>
    </message>
    <message>
        <source>Keep calm and write something</source>
        <translation>Mantieni la calma e scrivi qualcosa</translation>
    </message>
    <message>
        <source>Conflicted</source>
        <translation>In conflitto</translation>
    </message>
</context>
<context>
    <name>QBNoteTextView</name>
    <message>
        <source>Undo</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Ripeti</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Taglia</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copia</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Incolla</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Seleziona tutto</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Nota</translation>
    </message>
</context>
<context>
    <name>QBNotesTableViewController</name>
    <message>
        <source>Pin notes</source>
        <translation>Fissare le note</translation>
    </message>
    <message>
        <source>Unpin notes</source>
        <translation>Non fissare più le note</translation>
    </message>
    <message>
        <source>Archive notes</source>
        <translation>Archiviare le note</translation>
    </message>
    <message>
        <source>Unarchive notes</source>
        <translation>Togliere le note dall’archivio</translation>
    </message>
    <message>
        <source>Restore notes</source>
        <translation>Ripristinare le note</translation>
    </message>
    <message>
        <source>Delete notes</source>
        <translation>Eliminare le note</translation>
    </message>
    <message>
        <source>Are you sure you want to permanently delete the selected notes?</source>
        <translation>Eliminare definitivamente le note selezionate?</translation>
    </message>
    <message>
        <source>Do not show this warning again.</source>
        <translation>Non mostrare più questo avviso.</translation>
    </message>
    <message>
        <source>Duplicate notes</source>
        <translation>Duplicare le note</translation>
    </message>
    <message>
        <source>Merge notes</source>
        <translation>Unire le note</translation>
    </message>
    <message>
        <source>Unmerge notes</source>
        <translation>Dividere le note</translation>
    </message>
    <message>
        <source>Remove tag</source>
        <translation>Togliere l’etichetta</translation>
    </message>
    <message>
        <source>Re-add tag</source>
        <translation>Rimettere l’etichetta</translation>
    </message>
    <message>
        <source>Are you sure you want to permanently delete all notes in the trash?</source>
        <translation>Eliminare definitivamente tutte le note nel cestino?</translation>
    </message>
</context>
<context>
    <name>ShortTimeAgo</name>
    <message>
        <source>%1y</source>
        <translation>%1&#xa0;a</translation>
    </message>
    <message>
        <source>%1M</source>
        <translation>%1&#xa0;mesi</translation>
    </message>
    <message>
        <source>%1w</source>
        <translation>%1&#xa0;sett.</translation>
    </message>
    <message>
        <source>%1d</source>
        <translation>%1&#xa0;g</translation>
    </message>
    <message>
        <source>%1h</source>
        <translation>%1&#xa0;h</translation>
    </message>
    <message>
        <source>%1m</source>
        <translation>%1&#xa0;min</translation>
    </message>
    <message>
        <source>now</source>
        <translation>ora</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Notes</source>
        <translation>Note</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Archivio</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>Cestino</translation>
    </message>
    <message>
        <source>Untagged</source>
        <translation>Senza etichetta</translation>
    </message>
    <message>
        <source>Todo</source>
        <translation>Da fare</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Oggi</translation>
    </message>
    <message>
        <source>Sample Notes</source>
        <translation>Note di esempio</translation>
    </message>
</context>
<context>
    <name>WindowFrontEnd</name>
    <message>
        <source>Another Quib has them open, and cannot be reached from here. Go on in its window, or quit it and start Quib again.</source>
        <translation>Sono aperte in un altro Quib, che da qui non è raggiungibile. Continua nella sua finestra, oppure chiudilo e riavvia Quib.</translation>
    </message>
    <message>
        <source>Quib keeps its notes in this folder, and cannot write to it (%1). Make that possible, and start Quib again.</source>
        <translation>Quib conserva le note in questa cartella e non può scriverci (%1). Rendila scrivibile e riavvia Quib.</translation>
    </message>
    <message>
        <source>Your notes are in use</source>
        <translation>Le note sono già in uso</translation>
    </message>
    <message>
        <source>Your notes cannot be written to</source>
        <translation>Non è possibile scrivere le note</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Esci</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>Mostra la cartella</translation>
    </message>
</context>
<context>
    <name>quib::AboutPage</name>
    <message>
        <source>Version %1</source>
        <translation>Versione %1</translation>
    </message>
    <message>
        <source>Notes in plain text, kept on this computer.</source>
        <translation>Note in testo semplice, custodite su questo computer.</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copia</translation>
    </message>
    <message>
        <source>Copy the versions</source>
        <translation>Copia le versioni</translation>
    </message>
    <message>
        <source>For a bug report</source>
        <translation>Per segnalare un problema</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>Librerie</translation>
    </message>
    <message>
        <source>Their licences in full come with their packages, in %1.</source>
        <translation>I testi completi delle licenze si trovano con i rispettivi pacchetti, in %1.</translation>
    </message>
</context>
<context>
    <name>quib::AccessibleNoteTextView</name>
    <message>
        <source>Checks or unchecks the item at the caret</source>
        <translation>Spunta la voce al cursore o ne toglie la spunta</translation>
    </message>
</context>
<context>
    <name>quib::AutomationPage</name>
    <message>
        <source>Actions</source>
        <translation>Azioni</translation>
    </message>
    <message>
        <source>Scripts, launchers and other programs drive Quib by addresses. They can make notes, add to them, open them and search:</source>
        <translation>Script, lanciatori e altri programmi comandano Quib tramite indirizzi. Possono creare note, ampliarle, aprirle e cercare:</translation>
    </message>
    <message>
        <source>Example of an address</source>
        <translation>Esempio di indirizzo</translation>
    </message>
    <message>
        <source>Read More</source>
        <translation>Leggi di più</translation>
    </message>
    <message>
        <source>All actions with examples</source>
        <translation>Tutte le azioni con esempi</translation>
    </message>
    <message>
        <source>Token</source>
        <translation>Token</translation>
    </message>
    <message>
        <source>An action that lists your notes or tags answers only to who names this token. It lies in a file that you alone can read, and never leaves this computer. Give it to scripts that you trust.</source>
        <translation>Un’azione che elenca note o etichette risponde solo a chi indica questo token. Si trova in un file che solo tu puoi leggere e non lascia mai questo computer. Dallo agli script di cui ti fidi.</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Mostra</translation>
    </message>
    <message>
        <source>Show the token</source>
        <translation>Mostra il token</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copia</translation>
    </message>
    <message>
        <source>Copy the token</source>
        <translation>Copia il token</translation>
    </message>
    <message>
        <source>Renew…</source>
        <translation>Rinnova…</translation>
    </message>
    <message>
        <source>Renew the token?</source>
        <translation>Rinnovare il token?</translation>
    </message>
    <message>
        <source>Renew</source>
        <translation>Rinnova</translation>
    </message>
    <message>
        <source>This is the new token.</source>
        <translation>Questo è il nuovo token.</translation>
    </message>
    <message>
        <source>Renew the token</source>
        <translation>Rinnova il token</translation>
    </message>
    <message>
        <source>Scripts that know the old one are shut out.</source>
        <translation>Gli script che conoscono quello vecchio restano esclusi.</translation>
    </message>
    <message>
        <source>Make a Token</source>
        <translation>Crea un token</translation>
    </message>
    <message>
        <source>There is no token yet</source>
        <translation>Non c’è ancora un token</translation>
    </message>
    <message>
        <source>Until there is one, no script reads a list of notes.</source>
        <translation>Finché non c’è, nessuno script legge un elenco di note.</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Messaggio</translation>
    </message>
    <message>
        <source>The token is on the clipboard.</source>
        <translation>Il token è negli appunti.</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Indietro</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Nascondi</translation>
    </message>
    <message>
        <source>Hide the token</source>
        <translation>Nascondi il token</translation>
    </message>
</context>
<context>
    <name>quib::CompletionPopup</name>
    <message>
        <source>Completions</source>
        <translation>Completamenti</translation>
    </message>
</context>
<context>
    <name>quib::DesktopIntegration</name>
    <message>
        <source>The desktop has Quib’s shortcuts now; its keyboard settings give them keys.</source>
        <translation>La scrivania conosce ora le scorciatoie di Quib; i tasti si assegnano nelle impostazioni della tastiera.</translation>
    </message>
    <message>
        <source>These keys reach Quib from everywhere: %1</source>
        <translation>Questi tasti raggiungono Quib da ogni programma: %1</translation>
    </message>
    <message>
        <source>The desktop has given Quib no shortcuts.</source>
        <translation>La scrivania non ha concesso scorciatoie a Quib.</translation>
    </message>
    <message>
        <source>This desktop lets no program take keys everywhere. Its keyboard settings can give a key to the command “%1”.</source>
        <translation>Questa scrivania non permette ai programmi di ricevere tasti ovunque. Le sue impostazioni della tastiera possono assegnare un tasto al comando «%1».</translation>
    </message>
    <message>
        <source>Copy Command</source>
        <translation>Copia il comando</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>Nota rapida</translation>
    </message>
    <message>
        <source>New Note</source>
        <translation>Nuova nota</translation>
    </message>
    <message>
        <source>Search Notes</source>
        <translation>Cerca nelle note</translation>
    </message>
    <message>
        <source>Show Quib</source>
        <translation>Mostra Quib</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Esci</translation>
    </message>
    <message>
        <source>Write a quick note</source>
        <translation>Scrivi una nota rapida</translation>
    </message>
    <message>
        <source>Search the notes</source>
        <translation>Cerca nelle note</translation>
    </message>
</context>
<context>
    <name>quib::DetachedWindow</name>
    <message>
        <source>Close Window</source>
        <translation>Chiudi la finestra</translation>
    </message>
    <message>
        <source>Untitled note</source>
        <translation>Nota senza titolo</translation>
    </message>
    <message>
        <source>Keep Above Others</source>
        <translation>Tieni sopra le altre</translation>
    </message>
    <message>
        <source>All Commands…</source>
        <translation>Tutti i comandi…</translation>
    </message>
    <message>
        <source>Find a command</source>
        <translation>Trova un comando</translation>
    </message>
</context>
<context>
    <name>quib::EditorPage</name>
    <message>
        <source>Text</source>
        <translation>Testo</translation>
    </message>
    <message>
        <source>Sample of a note</source>
        <translation>Esempio di nota</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Carattere</translation>
    </message>
    <message>
        <source>Where this computer lacks a font, one of the same kind stands in.</source>
        <translation>Se un carattere manca su questo computer, ne fa le veci uno simile.</translation>
    </message>
    <message>
        <source> pt</source>
        <comment>points, behind a font size</comment>
        <translation>&#xa0;pt</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>Dimensione</translation>
    </message>
    <message>
        <source>Line height</source>
        <translation>Altezza della riga</translation>
    </message>
    <message>
        <source>× %1</source>
        <comment>a multiple</comment>
        <translation>×&#xa0;%1</translation>
    </message>
    <message>
        <source>Line width</source>
        <translation>Larghezza della riga</translation>
    </message>
    <message>
        <source>%1 em</source>
        <comment>width of a line</comment>
        <translation>%1&#xa0;em</translation>
    </message>
    <message>
        <source>Space between paragraphs</source>
        <translation>Spazio tra i paragrafi</translation>
    </message>
    <message>
        <source>%1 em</source>
        <comment>space</comment>
        <translation>%1&#xa0;em</translation>
    </message>
    <message>
        <source>Use the Font’s Own</source>
        <translation>Usa quelli del carattere</translation>
    </message>
    <message>
        <source>Sizes and spaces</source>
        <translation>Dimensioni e spazi</translation>
    </message>
    <message>
        <source>Every font comes with sizes that suit it.</source>
        <translation>Ogni carattere ha le dimensioni che gli si addicono.</translation>
    </message>
    <message>
        <source>Markup</source>
        <translation>Marcatura</translation>
    </message>
    <message>
        <source>Notes are written in</source>
        <translation>Le note sono scritte in</translation>
    </message>
    <message>
        <source>Your notes stay as they are written: this decides how their signs are read.</source>
        <translation>Le note restano come sono scritte: qui si decide come si leggono i loro segni.</translation>
    </message>
    <message>
        <source>Quib’s markup</source>
        <translation>Marcatura di Quib</translation>
    </message>
    <message>
        <source>Markdown</source>
        <translation>Markdown</translation>
    </message>
    <message>
        <source>bold</source>
        <translation>grassetto</translation>
    </message>
    <message>
        <source>italic</source>
        <translation>corsivo</translation>
    </message>
    <message>
        <source>underlined</source>
        <translation>sottolineato</translation>
    </message>
    <message>
        <source>struck</source>
        <translation>barrato</translation>
    </message>
    <message>
        <source>to do</source>
        <translation>da fare</translation>
    </message>
    <message>
        <source>done</source>
        <translation>fatto</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>Scrittura</translation>
    </message>
    <message>
        <source>Complete tags, links and languages</source>
        <translation>Completa etichette, collegamenti e linguaggi</translation>
    </message>
    <message>
        <source>A list of what fits appears while you type.</source>
        <translation>Mentre scrivi appare un elenco di ciò che si adatta.</translation>
    </message>
    <message>
        <source>Fold completed to-dos</source>
        <translation>Comprimi le cose fatte</translation>
    </message>
    <message>
        <source>What is ticked off takes one short line until you open it.</source>
        <translation>Ciò che è spuntato occupa una sola riga breve finché non lo apri.</translation>
    </message>
    <message>
        <source>Typewriter scrolling</source>
        <translation>Scorrimento a macchina da scrivere</translation>
    </message>
    <message>
        <source>The line you write in stays at the same height.</source>
        <translation>La riga in cui scrivi resta alla stessa altezza.</translation>
    </message>
    <message>
        <source>Focus on the paragraph</source>
        <translation>Concentrazione sul paragrafo</translation>
    </message>
    <message>
        <source>All but the paragraph you write in stands back.</source>
        <translation>Tutto si attenua tranne il paragrafo in cui scrivi.</translation>
    </message>
    <message>
        <source>Show the format bar</source>
        <translation>Mostra la barra di formattazione</translation>
    </message>
    <message>
        <source>Check the spelling</source>
        <translation>Controlla l’ortografia</translation>
    </message>
    <message>
        <source>Misspelt words get a wavy line, in the languages of your dictionaries.</source>
        <translation>Le parole errate sono sottolineate da una linea ondulata, nelle lingue dei tuoi dizionari.</translation>
    </message>
    <message>
        <source>There is no dictionary on this computer. Packages of dictionaries are named %1.</source>
        <translation>Su questo computer non ci sono dizionari. I pacchetti dei dizionari si chiamano %1.</translation>
    </message>
    <message>
        <source>Languages of the spelling</source>
        <translation>Lingue dell’ortografia</translation>
    </message>
    <message>
        <source>Which of them a paragraph is in is told by its words.</source>
        <translation>La lingua di un paragrafo si riconosce dalle sue parole.</translation>
    </message>
    <message>
        <source>As the Desktop</source>
        <translation>Come la scrivania</translation>
    </message>
    <message numerus="yes">
        <source>%n languages</source>
        <translation>
            <numerusform>%n lingua</numerusform>
            <numerusform>%n lingue</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::EditorPane</name>
    <message>
        <source>Note</source>
        <translation>Nota</translation>
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
        <translation>Trova nella nota</translation>
    </message>
    <message>
        <source>Find in note</source>
        <translation>Trova nella nota</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Trova</translation>
    </message>
    <message>
        <source>Match Case</source>
        <translation>Maiuscole/minuscole</translation>
    </message>
    <message>
        <source>Whole Words</source>
        <translation>Parole intere</translation>
    </message>
    <message>
        <source>Regular Expression</source>
        <translation>Espressione regolare</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Trova precedente</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Trova successivo</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Chiudi</translation>
    </message>
    <message>
        <source>Replace with</source>
        <translation>Sostituisci con</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Sostituisci</translation>
    </message>
    <message>
        <source>Replace All</source>
        <translation>Sostituisci tutto</translation>
    </message>
    <message>
        <source>Not a valid pattern</source>
        <translation>Espressione non valida</translation>
    </message>
    <message>
        <source>Too much to replace</source>
        <translation>Troppo da sostituire</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Non trovato</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 di %2</translation>
    </message>
    <message numerus="yes">
        <source>%n replaced</source>
        <translation>
            <numerusform>%n sostituzione</numerusform>
            <numerusform>%n sostituzioni</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 of more than %2</source>
        <translation>%1 di oltre %2</translation>
    </message>
</context>
<context>
    <name>quib::FormatBar</name>
    <message>
        <source>Format</source>
        <translation>Formato</translation>
    </message>
    <message>
        <source>More Formats</source>
        <translation>Altri formati</translation>
    </message>
</context>
<context>
    <name>quib::GeneralPage</name>
    <message>
        <source>Lists</source>
        <translation>Elenchi</translation>
    </message>
    <message>
        <source>Sort notes by</source>
        <translation>Ordina le note per</translation>
    </message>
    <message>
        <source>Date Changed</source>
        <translation>Data di modifica</translation>
    </message>
    <message>
        <source>Date Created</source>
        <translation>Data di creazione</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titolo</translation>
    </message>
    <message>
        <source>Order of notes</source>
        <translation>Ordine delle note</translation>
    </message>
    <message>
        <source>Pinned notes stand above all others.</source>
        <translation>Le note fissate stanno sopra tutte le altre.</translation>
    </message>
    <message>
        <source>Descending</source>
        <translation>Decrescente</translation>
    </message>
    <message>
        <source>Ascending</source>
        <translation>Crescente</translation>
    </message>
    <message>
        <source>Sort tags by</source>
        <translation>Ordina le etichette per</translation>
    </message>
    <message>
        <source>Number of Notes</source>
        <translation>Numero di note</translation>
    </message>
    <message>
        <source>Order of tags</source>
        <translation>Ordine delle etichette</translation>
    </message>
    <message>
        <source>Symbols for tags</source>
        <translation>Simboli per le etichette</translation>
    </message>
    <message>
        <source>Tags in the sidebar get a symbol that fits their name.</source>
        <translation>Le etichette nella barra laterale ricevono un simbolo adatto al loro nome.</translation>
    </message>
    <message>
        <source>Links</source>
        <translation>Collegamenti</translation>
    </message>
    <message>
        <source>Look up the titles of copied links</source>
        <translation>Cerca i titoli dei collegamenti copiati</translation>
    </message>
    <message>
        <source>A web address on the clipboard gets the title of its page before you paste it. Quib asks that page for it.</source>
        <translation>Un indirizzo web negli appunti riceve il titolo della sua pagina prima che lo incolli. Quib lo chiede a quella pagina.</translation>
    </message>
    <message>
        <source>On this computer</source>
        <translation>Su questo computer</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>Mostra la cartella</translation>
    </message>
    <message>
        <source>Show the folder of the notes</source>
        <translation>Mostra la cartella delle note</translation>
    </message>
    <message>
        <source>Notes and attachments</source>
        <translation>Note e allegati</translation>
    </message>
    <message>
        <source>Write a log file</source>
        <translation>Scrivi un file di registro</translation>
    </message>
    <message>
        <source>For finding out what went wrong. The log has no text of your notes.</source>
        <translation>Per capire che cosa è andato storto. Il registro non contiene testo delle tue note.</translation>
    </message>
    <message>
        <source>Show the folder of the logs</source>
        <translation>Mostra la cartella dei registri</translation>
    </message>
    <message>
        <source>Logs</source>
        <translation>Registri</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>Ricomincia</translation>
    </message>
    <message>
        <source>Reset…</source>
        <translation>Reimposta…</translation>
    </message>
    <message>
        <source>Reset all preferences?</source>
        <translation>Reimpostare tutte le preferenze?</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Reimposta</translation>
    </message>
    <message>
        <source>Reset all preferences</source>
        <translation>Reimposta tutte le preferenze</translation>
    </message>
    <message>
        <source>Themes, fonts, lists and writing go back to how they were. No note changes.</source>
        <translation>Temi, caratteri, elenchi e scrittura tornano come all’inizio. Nessuna nota cambia.</translation>
    </message>
</context>
<context>
    <name>quib::InformationPanel</name>
    <message>
        <source>Note Information</source>
        <translation>Informazioni sulla nota</translation>
    </message>
    <message>
        <source>Words</source>
        <translation>Parole</translation>
    </message>
    <message>
        <source>Characters</source>
        <translation>Caratteri</translation>
    </message>
    <message>
        <source>Paragraphs</source>
        <translation>Paragrafi</translation>
    </message>
    <message>
        <source>Reading time</source>
        <translation>Tempo di lettura</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Modificata</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Creata</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Indice</translation>
    </message>
    <message>
        <source>Notes That Link Here</source>
        <translation>Note che rimandano qui</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1&#xa0;min</translation>
    </message>
    <message>
        <source>Headings of the note stand here.</source>
        <translation>Qui compaiono i titoli della nota.</translation>
    </message>
    <message>
        <source>No note links here yet.</source>
        <translation>Nessuna nota rimanda ancora qui.</translation>
    </message>
    <message>
        <source>%1, heading %2</source>
        <translation>%1, titolo %2</translation>
    </message>
</context>
<context>
    <name>quib::InlineQuestion</name>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
</context>
<context>
    <name>quib::MessageBar</name>
    <message>
        <source>Close the message</source>
        <translation>Chiudi il messaggio</translation>
    </message>
</context>
<context>
    <name>quib::NoteListModel</name>
    <message>
        <source>Untitled note</source>
        <translation>Nota senza titolo</translation>
    </message>
    <message>
        <source>pinned</source>
        <translation>fissata</translation>
    </message>
    <message>
        <source>in conflict with another version</source>
        <translation>in conflitto con un’altra versione</translation>
    </message>
    <message>
        <source>%1 of %2 done</source>
        <translation>%1 di %2 fatte</translation>
    </message>
</context>
<context>
    <name>quib::NoteListView</name>
    <message>
        <source>Notes</source>
        <translation>Note</translation>
    </message>
    <message numerus="yes">
        <source>%n notes</source>
        <translation>
            <numerusform>%n nota</numerusform>
            <numerusform>%n note</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::NoteTextViewSpelling</name>
    <message>
        <source>Looking for Words…</source>
        <translation>Ricerca di parole…</translation>
    </message>
    <message>
        <source>Add “%1” to the Dictionary</source>
        <translation>Aggiungi «%1» al dizionario</translation>
    </message>
    <message>
        <source>Ignore “%1”</source>
        <translation>Ignora «%1»</translation>
    </message>
    <message>
        <source>No Other Words Found</source>
        <translation>Nessun’altra parola trovata</translation>
    </message>
</context>
<context>
    <name>quib::OverlayScrollBar</name>
    <message>
        <source>Scroll bar</source>
        <translation>Barra di scorrimento</translation>
    </message>
</context>
<context>
    <name>quib::PreferencesWindow</name>
    <message>
        <source>Preferences</source>
        <translation>Preferenze</translation>
    </message>
    <message>
        <source>Pages of the preferences</source>
        <translation>Pagine delle preferenze</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Generale</translation>
    </message>
    <message>
        <source>Editor</source>
        <translation>Editor</translation>
    </message>
    <message>
        <source>Themes</source>
        <translation>Temi</translation>
    </message>
    <message>
        <source>Automation</source>
        <translation>Automazione</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Scorciatoie</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Informazioni</translation>
    </message>
</context>
<context>
    <name>quib::QuickNoteWindow</name>
    <message>
        <source>Saved as you type. Escape closes.</source>
        <translation>Salvata mentre scrivi. Esc chiude.</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>Nota rapida</translation>
    </message>
    <message>
        <source>Open in Quib</source>
        <translation>Apri in Quib</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>Chiudi la finestra</translation>
    </message>
    <message>
        <source>Go on in the main window (Ctrl+O)</source>
        <translation>Continua nella finestra principale (Ctrl+O)</translation>
    </message>
</context>
<context>
    <name>quib::SavingMessage</name>
    <message>
        <source>The file of your notes is damaged, and parts of it cannot be read. Nothing is written to it any more. Quit Quib, and run “quibctl check” in a terminal to learn what is whole.</source>
        <translation>Il file delle note è danneggiato e in parte illeggibile. Non vi viene più scritto nulla. Chiudi Quib ed esegui «quibctl check» in un terminale per sapere che cosa è intatto.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: the disk is full. Make some room on it; Quib keeps trying.</source>
        <translation>Non è possibile salvare le note: il disco è pieno. Libera un po’ di spazio; Quib continua a provare.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: their folder cannot be written to. Quib keeps trying.</source>
        <translation>Non è possibile salvare le note: la loro cartella non è scrivibile. Quib continua a provare.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: another program does not let go of them. Quib keeps trying.</source>
        <translation>Non è possibile salvare le note: un altro programma le tiene occupate. Quib continua a provare.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved. Quib keeps trying. The reason: %1</source>
        <translation>Non è possibile salvare le note. Quib continua a provare. Il motivo: %1</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Riprova</translation>
    </message>
    <message>
        <source>%1 What you wrote last may be lost if you quit now.</source>
        <comment>%1 is one or more sentences</comment>
        <translation>%1 Se chiudi ora, ciò che hai scritto per ultimo può andare perduto.</translation>
    </message>
    <message>
        <source>Quit Without Saving</source>
        <translation>Esci senza salvare</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
</context>
<context>
    <name>quib::SearchField</name>
    <message>
        <source>notes with something left to do</source>
        <translation>note con qualcosa da fare</translation>
    </message>
    <message>
        <source>notes where everything is done</source>
        <translation>note in cui tutto è fatto</translation>
    </message>
    <message>
        <source>notes with to-dos</source>
        <translation>note con cose da fare</translation>
    </message>
    <message>
        <source>changed today</source>
        <translation>modificate oggi</translation>
    </message>
    <message>
        <source>changed yesterday</source>
        <translation>modificate ieri</translation>
    </message>
    <message>
        <source>changed in the last seven days</source>
        <translation>modificate negli ultimi sette giorni</translation>
    </message>
    <message>
        <source>changed on a day: @date(2024-12-31)</source>
        <translation>modificate in un giorno: @date(2024-12-31)</translation>
    </message>
    <message>
        <source>created on a day: @cdate(2024-12-31)</source>
        <translation>create in un giorno: @cdate(2024-12-31)</translation>
    </message>
    <message>
        <source>notes with pictures</source>
        <translation>note con immagini</translation>
    </message>
    <message>
        <source>notes with files</source>
        <translation>note con file</translation>
    </message>
    <message>
        <source>notes with pictures or files</source>
        <translation>note con immagini o file</translation>
    </message>
    <message>
        <source>notes with code</source>
        <translation>note con codice</translation>
    </message>
    <message>
        <source>notes with tags</source>
        <translation>note con etichette</translation>
    </message>
    <message>
        <source>notes without tags</source>
        <translation>note senza etichette</translation>
    </message>
    <message>
        <source>Search notes</source>
        <translation>Cerca nelle note</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Cerca</translation>
    </message>
    <message>
        <source>Words, &quot;phrases&quot; and #tags; a minus excludes; @ offers more</source>
        <translation>Parole, &quot;frasi&quot; e #etichette; il meno esclude; @ offre di più</translation>
    </message>
    <message>
        <source>End the search</source>
        <translation>Termina la ricerca</translation>
    </message>
    <message>
        <source>word</source>
        <translation>parola</translation>
    </message>
    <message>
        <source>notes with the word, or with a word that has it in it</source>
        <translation>note con la parola, o con una parola che la contiene</translation>
    </message>
    <message>
        <source>&quot;two words&quot;</source>
        <translation>&quot;due parole&quot;</translation>
    </message>
    <message>
        <source>notes with just these words, one behind the other</source>
        <translation>note con proprio queste parole, una dopo l’altra</translation>
    </message>
    <message>
        <source>-word</source>
        <translation>-parola</translation>
    </message>
    <message>
        <source>notes without the word</source>
        <translation>note senza la parola</translation>
    </message>
    <message>
        <source>#tag</source>
        <translation>#etichetta</translation>
    </message>
    <message>
        <source>notes with the tag in their text</source>
        <translation>note con l’etichetta nel testo</translation>
    </message>
</context>
<context>
    <name>quib::ShortcutsPage</name>
    <message>
        <source>or</source>
        <comment>between two shortcuts</comment>
        <translation>o</translation>
    </message>
    <message>
        <source>No shortcut matches.</source>
        <translation>Nessuna scorciatoia corrisponde.</translation>
    </message>
    <message>
        <source>Search commands and keys</source>
        <translation>Cerca comandi e tasti</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Scorciatoie da tastiera</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Comando</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasti</translation>
    </message>
</context>
<context>
    <name>quib::SidebarModel</name>
    <message>
        <source>Tags</source>
        <translation>Etichette</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n note(s)</source>
        <translation>
            <numerusform>%1, %n nota</numerusform>
            <numerusform>%1, %n note</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::SidebarView</name>
    <message>
        <source>Lists and tags</source>
        <translation>Elenchi ed etichette</translation>
    </message>
</context>
<context>
    <name>quib::SpokenNoteText</name>
    <message>
        <source>checked item</source>
        <translation>voce spuntata</translation>
    </message>
    <message>
        <source>unchecked item</source>
        <translation>voce non spuntata</translation>
    </message>
    <message>
        <source>heading %1</source>
        <translation>titolo %1</translation>
    </message>
    <message>
        <source>picture %1</source>
        <translation>immagine %1</translation>
    </message>
    <message>
        <source>file %1</source>
        <translation>file %1</translation>
    </message>
    <message>
        <source>separator</source>
        <translation>separatore</translation>
    </message>
    <message>
        <source>folded text</source>
        <translation>testo compresso</translation>
    </message>
    <message>
        <source>link to a note</source>
        <translation>collegamento a una nota</translation>
    </message>
    <message>
        <source>link</source>
        <translation>collegamento</translation>
    </message>
</context>
<context>
    <name>quib::SymbolPicker</name>
    <message>
        <source>Symbol of the tag</source>
        <translation>Simbolo dell’etichetta</translation>
    </message>
    <message>
        <source>Symbols</source>
        <translation>Simboli</translation>
    </message>
    <message>
        <source>By the Tag’s Name</source>
        <translation>Secondo il nome dell’etichetta</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>Etichetta</translation>
    </message>
    <message>
        <source>Animal</source>
        <translation>Animale</translation>
    </message>
    <message>
        <source>Art</source>
        <translation>Arte</translation>
    </message>
    <message>
        <source>Book</source>
        <translation>Libro</translation>
    </message>
    <message>
        <source>Bug</source>
        <translation>Insetto</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Calendario</translation>
    </message>
    <message>
        <source>Car</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>Codice</translation>
    </message>
    <message>
        <source>Film</source>
        <translation>Film</translation>
    </message>
    <message>
        <source>Food</source>
        <translation>Cibo</translation>
    </message>
    <message>
        <source>Game</source>
        <translation>Gioco</translation>
    </message>
    <message>
        <source>Gift</source>
        <translation>Regalo</translation>
    </message>
    <message>
        <source>Health</source>
        <translation>Salute</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Casa</translation>
    </message>
    <message>
        <source>Idea</source>
        <translation>Idea</translation>
    </message>
    <message>
        <source>Journal</source>
        <translation>Diario</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>Collegamento</translation>
    </message>
    <message>
        <source>Money</source>
        <translation>Denaro</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Musica</translation>
    </message>
    <message>
        <source>People</source>
        <translation>Persone</translation>
    </message>
    <message>
        <source>Photo</source>
        <translation>Foto</translation>
    </message>
    <message>
        <source>Plant</source>
        <translation>Pianta</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Progetto</translation>
    </message>
    <message>
        <source>School</source>
        <translation>Scuola</translation>
    </message>
    <message>
        <source>Science</source>
        <translation>Scienza</translation>
    </message>
    <message>
        <source>Shopping</source>
        <translation>Spesa</translation>
    </message>
    <message>
        <source>Sport</source>
        <translation>Sport</translation>
    </message>
    <message>
        <source>To-do</source>
        <translation>Cosa da fare</translation>
    </message>
    <message>
        <source>Travel</source>
        <translation>Viaggi</translation>
    </message>
    <message>
        <source>Work</source>
        <translation>Lavoro</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>Scrittura</translation>
    </message>
</context>
<context>
    <name>quib::ThemeGallery</name>
    <message>
        <source>Themes</source>
        <translation>Temi</translation>
    </message>
</context>
<context>
    <name>quib::ThemeGalleryModel</name>
    <message>
        <source>%1, in use</source>
        <comment>theme</comment>
        <translation>%1, in uso</translation>
    </message>
    <message>
        <source>%1, in use when the desktop is light</source>
        <comment>theme</comment>
        <translation>%1, in uso con la scrivania chiara</translation>
    </message>
    <message>
        <source>%1, in use when the desktop is dark</source>
        <comment>theme</comment>
        <translation>%1, in uso con la scrivania scura</translation>
    </message>
</context>
<context>
    <name>quib::ThemePreview</name>
    <message>
        <source>%1Low tide%2 is at nine. Take the %3slow path%4 along the harbour.</source>
        <translation>La %1bassa marea%2 è alle nove. Prendi la %3via lenta%4 lungo il porto.</translation>
    </message>
    <message>
        <source>A day by the sea</source>
        <translation>Una giornata al mare</translation>
    </message>
    <message>
        <source>Pack the ::blue:: bag</source>
        <translation>Preparare lo zaino ::blu::</translation>
    </message>
    <message>
        <source>Buy bread and [[Cheese]]</source>
        <translation>Comprare pane e [[Formaggio]]</translation>
    </message>
    <message>
        <source>The sea is never late.</source>
        <translation>Il mare non è mai in ritardo.</translation>
    </message>
    <message>
        <source>travel/coast</source>
        <translation>viaggi/costa</translation>
    </message>
</context>
<context>
    <name>quib::ThemesPage</name>
    <message>
        <source>Choose the theme for a light desktop</source>
        <translation>Scegli il tema per la scrivania chiara</translation>
    </message>
    <message>
        <source>Choose the theme for a dark desktop</source>
        <translation>Scegli il tema per la scrivania scura</translation>
    </message>
    <message>
        <source>Light desktop: %1</source>
        <translation>Scrivania chiara: %1</translation>
    </message>
    <message>
        <source>Dark desktop: %1</source>
        <translation>Scrivania scura: %1</translation>
    </message>
    <message>
        <source>Quib follows the desktop, which is dark at the moment.</source>
        <translation>Quib segue la scrivania, che al momento è scura.</translation>
    </message>
    <message>
        <source>Quib follows the desktop, which is light at the moment.</source>
        <translation>Quib segue la scrivania, che al momento è chiara.</translation>
    </message>
</context>
</TS>
