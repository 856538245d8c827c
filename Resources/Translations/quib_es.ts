<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>QBAppDelegate</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>y otro más</numerusform>
            <numerusform>y otros %n</numerusform>
        </translation>
    </message>
    <message>
        <source>These files cannot be opened</source>
        <translation>No se pueden abrir estos archivos</translation>
    </message>
    <message>
        <source>This version of Quib opens pictures only. Nothing was imported from:
%1</source>
        <translation>Esta versión de Quib solo abre imágenes. No se importó nada de:
%1</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>These pictures could not be copied</source>
        <translation>No se pudieron copiar estas imágenes</translation>
    </message>
    <message>
        <source>Something went wrong</source>
        <translation>Algo ha fallado</translation>
    </message>
    <message>
        <source>Just a moment and Quib will be ready!</source>
        <translation>¡Un momento y Quib estará listo!</translation>
    </message>
    <message>
        <source>Quib is currently speeding up your notes and migrating the database to a new version.
We highly suggest not to exit from Quib during the whole process.</source>
        <translation>Quib está acelerando sus notas y migrando la base de datos a una versión nueva.
Le recomendamos no salir de Quib durante el proceso.</translation>
    </message>
    <message>
        <source>It was not possible to migrate your database to the new version. Don&apos;t worry your notes are safe, please contact the support team using the &apos;Contact Support&apos; button below and they will help you.</source>
        <translation>No se pudo migrar la base de datos a la versión nueva. No se preocupe, sus notas están a salvo: póngase en contacto con el equipo de soporte mediante el botón «Contactar con soporte» y le ayudarán.</translation>
    </message>
    <message>
        <source>Contact Support</source>
        <translation>Contactar con soporte</translation>
    </message>
    <message>
        <source>Your notes could not be opened</source>
        <translation>No se pudieron abrir sus notas</translation>
    </message>
    <message>
        <source>The file that holds them is damaged, or is no file of Quib&apos;s. Nothing was changed. Put a copy from a backup in its place, and start Quib again.</source>
        <translation>El archivo que las contiene está dañado o no es de Quib. No se ha modificado nada. Ponga en su lugar una copia de seguridad e inicie Quib de nuevo.</translation>
    </message>
    <message>
        <source>Nothing was changed. The reason: %1</source>
        <translation>No se ha modificado nada. El motivo: %1</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>Mostrar la carpeta</translation>
    </message>
</context>
<context>
    <name>QBMainWindowController</name>
    <message>
        <source>New Note</source>
        <translation>Nota nueva</translation>
    </message>
    <message>
        <source>New Note in New Window</source>
        <translation>Nota nueva en otra ventana</translation>
    </message>
    <message>
        <source>Open Quickly…</source>
        <translation>Abrir rápidamente…</translation>
    </message>
    <message>
        <source>Open in New Window</source>
        <translation>Abrir en una ventana nueva</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Duplicar</translation>
    </message>
    <message>
        <source>Merge</source>
        <translation>Combinar</translation>
    </message>
    <message>
        <source>Pin to Top</source>
        <translation>Fijar arriba</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Archivar</translation>
    </message>
    <message>
        <source>Move to Trash</source>
        <translation>Mover a la papelera</translation>
    </message>
    <message>
        <source>Put Back</source>
        <translation>Restaurar</translation>
    </message>
    <message>
        <source>Copy Link to Note</source>
        <translation>Copiar el enlace a la nota</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>Cerrar la ventana</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Deshacer</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Rehacer</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Cortar</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Pegar</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Seleccionar todo</translation>
    </message>
    <message>
        <source>Search Notes</source>
        <translation>Buscar en las notas</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <translation>Preferencias…</translation>
    </message>
    <message>
        <source>Rename Tag</source>
        <translation>Cambiar el nombre de la etiqueta</translation>
    </message>
    <message>
        <source>Delete Tag</source>
        <translation>Eliminar la etiqueta</translation>
    </message>
    <message>
        <source>Remove Tag from Notes</source>
        <translation>Quitar la etiqueta de las notas</translation>
    </message>
    <message>
        <source>Sidebar, Notes and Editor</source>
        <translation>Barra lateral, notas y editor</translation>
    </message>
    <message>
        <source>Notes and Editor</source>
        <translation>Notas y editor</translation>
    </message>
    <message>
        <source>Editor Only</source>
        <translation>Solo el editor</translation>
    </message>
    <message>
        <source>Show or Hide the Sidebar</source>
        <translation>Mostrar u ocultar la barra lateral</translation>
    </message>
    <message>
        <source>Full Screen</source>
        <translation>Pantalla completa</translation>
    </message>
    <message>
        <source>Next Note</source>
        <translation>Nota siguiente</translation>
    </message>
    <message>
        <source>Previous Note</source>
        <translation>Nota anterior</translation>
    </message>
    <message>
        <source>Go to Notes</source>
        <translation>Ir a las notas</translation>
    </message>
    <message>
        <source>Go to Untagged</source>
        <translation>Ir a «Sin etiquetas»</translation>
    </message>
    <message>
        <source>Go to Todo</source>
        <translation>Ir a «Tareas»</translation>
    </message>
    <message>
        <source>Go to Today</source>
        <translation>Ir a «Hoy»</translation>
    </message>
    <message>
        <source>Go to Trash</source>
        <translation>Ir a la papelera</translation>
    </message>
    <message>
        <source>Keyboard to Sidebar</source>
        <translation>Teclado a la barra lateral</translation>
    </message>
    <message>
        <source>Keyboard to Notes</source>
        <translation>Teclado a las notas</translation>
    </message>
    <message>
        <source>Keyboard to Editor</source>
        <translation>Teclado al editor</translation>
    </message>
    <message>
        <source>All Commands…</source>
        <translation>Todos los comandos…</translation>
    </message>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Atajos de teclado</translation>
    </message>
    <message>
        <source>About Quib</source>
        <translation>Acerca de Quib</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Archivo</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Editar</translation>
    </message>
    <message>
        <source>&amp;Note</source>
        <translation>&amp;Nota</translation>
    </message>
    <message>
        <source>&amp;Tag</source>
        <translation>E&amp;tiqueta</translation>
    </message>
    <message>
        <source>F&amp;ormat</source>
        <translation>&amp;Formato</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ver</translation>
    </message>
    <message>
        <source>Sort Notes</source>
        <translation>Ordenar las notas</translation>
    </message>
    <message>
        <source>Theme</source>
        <translation>Tema</translation>
    </message>
    <message>
        <source>&amp;Go</source>
        <translation>&amp;Ir</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>A&amp;yuda</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Más</translation>
    </message>
    <message>
        <source>Commands for this note</source>
        <translation>Comandos para esta nota</translation>
    </message>
    <message>
        <source>Date Changed</source>
        <translation>Fecha de modificación</translation>
    </message>
    <message>
        <source>Date Created</source>
        <translation>Fecha de creación</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Título</translation>
    </message>
    <message>
        <source>Ascending</source>
        <translation>Ascendente</translation>
    </message>
    <message>
        <source>Descending</source>
        <translation>Descendente</translation>
    </message>
    <message>
        <source>Empty Trash…</source>
        <translation>Vaciar la papelera…</translation>
    </message>
    <message>
        <source>The tag #%1 is #%2 now.</source>
        <translation>La etiqueta #%1 ahora es #%2.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message numerus="yes">
        <source>%n link(s) copied.</source>
        <translation>
            <numerusform>%n enlace copiado.</numerusform>
            <numerusform>%n enlaces copiados.</numerusform>
        </translation>
    </message>
    <message>
        <source>Untitled note</source>
        <translation>Nota sin título</translation>
    </message>
    <message>
        <source>Open a note by its title</source>
        <translation>Abrir una nota por su título</translation>
    </message>
    <message>
        <source>New note “%1”</source>
        <translation>Nota nueva «%1»</translation>
    </message>
    <message>
        <source>Find a command</source>
        <translation>Buscar un comando</translation>
    </message>
    <message>
        <source>Theme: %1</source>
        <translation>Tema: %1</translation>
    </message>
    <message>
        <source>current</source>
        <translation>actual</translation>
    </message>
    <message>
        <source>Quib</source>
        <translation>Quib</translation>
    </message>
    <message>
        <source>“%1” could not be taken into the note.</source>
        <translation>No se pudo añadir «%1» a la nota.</translation>
    </message>
    <message>
        <source>No note matches “%1”.</source>
        <translation>Ninguna nota coincide con «%1».</translation>
    </message>
    <message>
        <source>The trash is empty.</source>
        <translation>La papelera está vacía.</translation>
    </message>
    <message>
        <source>No notes here yet.</source>
        <translation>Aquí aún no hay notas.</translation>
    </message>
    <message numerus="yes">
        <source>%n notes selected</source>
        <translation>
            <numerusform>%n nota seleccionada</numerusform>
            <numerusform>%n notas seleccionadas</numerusform>
        </translation>
    </message>
    <message>
        <source>Drag them onto a tag, or choose a command from their menu.</source>
        <translation>Arrástrelas sobre una etiqueta o elija un comando en su menú.</translation>
    </message>
    <message>
        <source>Write your first note</source>
        <translation>Escriba su primera nota</translation>
    </message>
    <message>
        <source>Give it a title, tag it with a #word, tick things off with a dash at the start of a line. Everything is saved as you type.</source>
        <translation>Dele un título, etiquétela con una #palabra, marque tareas con un guion al comienzo de la línea. Todo se guarda mientras escribe.</translation>
    </message>
    <message>
        <source>No note selected</source>
        <translation>Ninguna nota seleccionada</translation>
    </message>
    <message>
        <source>Choose one from the list, or press Ctrl+O to open it by its title.</source>
        <translation>Elija una de la lista o pulse Ctrl+O para abrirla por su título.</translation>
    </message>
    <message>
        <source>Unpin</source>
        <translation>Dejar de fijar</translation>
    </message>
    <message>
        <source>Unarchive</source>
        <translation>Desarchivar</translation>
    </message>
    <message>
        <source>Delete Permanently…</source>
        <translation>Eliminar definitivamente…</translation>
    </message>
    <message>
        <source>In the trash</source>
        <translation>En la papelera</translation>
    </message>
    <message>
        <source>Archived</source>
        <translation>Archivada</translation>
    </message>
    <message>
        <source>Edited today, %1</source>
        <translation>Modificada hoy a las %1</translation>
    </message>
    <message>
        <source>HH:mm</source>
        <comment>time of day</comment>
        <translation>H:mm</translation>
    </message>
    <message>
        <source>Edited %1</source>
        <translation>Modificada el %1</translation>
    </message>
    <message>
        <source>Undo %1</source>
        <translation>Deshacer: %1</translation>
    </message>
    <message>
        <source>Redo %1</source>
        <translation>Rehacer: %1</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>Nota rápida</translation>
    </message>
    <message>
        <source>What Can Be Searched For…</source>
        <translation>Qué se puede buscar…</translation>
    </message>
    <message>
        <source>Choose Symbol…</source>
        <translation>Elegir símbolo…</translation>
    </message>
    <message>
        <source>Icon in the Tray</source>
        <translation>Icono en la bandeja</translation>
    </message>
    <message>
        <source>Shortcuts from Everywhere…</source>
        <translation>Atajos desde cualquier programa…</translation>
    </message>
    <message>
        <source>What can be searched for</source>
        <translation>Qué se puede buscar</translation>
    </message>
    <message numerus="yes">
        <source>The tag #%1 was taken out of %n note(s).</source>
        <translation>
            <numerusform>La etiqueta #%1 se quitó de %n nota.</numerusform>
            <numerusform>La etiqueta #%1 se quitó de %n notas.</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose Symbol</source>
        <translation>Elegir símbolo</translation>
    </message>
    <message>
        <source>“%1” could not be written.</source>
        <translation>No se pudo escribir «%1».</translation>
    </message>
    <message numerus="yes">
        <source>%n found</source>
        <translation>
            <numerusform>%n encontrada</numerusform>
            <numerusform>%n encontradas</numerusform>
        </translation>
    </message>
    <message>
        <source>Print…</source>
        <translation>Imprimir…</translation>
    </message>
    <message>
        <source>Print Note</source>
        <translation>Imprimir la nota</translation>
    </message>
    <message>
        <source>“%1” could not be printed.</source>
        <translation>No se pudo imprimir «%1».</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>No se encontró nada</translation>
    </message>
    <message>
        <source>Try fewer words, or look in all notes.</source>
        <translation>Pruebe con menos palabras o busque en todas las notas.</translation>
    </message>
    <message>
        <source>These notes could not be read.</source>
        <translation>No se pudieron leer estas notas.</translation>
    </message>
    <message>
        <source>Your notes could not be read</source>
        <translation>No se pudieron leer sus notas</translation>
    </message>
    <message>
        <source>Not saved yet</source>
        <translation>Aún sin guardar</translation>
    </message>
    <message>
        <source>The note was put into the trash elsewhere.</source>
        <translation>La nota se ha movido a la papelera en otro lugar.</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n Notes</source>
        <translation>
            <numerusform>Eliminar %n nota</numerusform>
            <numerusform>Eliminar %n notas</numerusform>
        </translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>Eliminar «%1»</translation>
    </message>
    <message>
        <source>The note was deleted elsewhere. What was not saved yet is in a new note.</source>
        <translation>La nota se ha eliminado en otro lugar. Lo que aún no se había guardado está en una nota nueva.</translation>
    </message>
    <message>
        <source>The note was deleted elsewhere.</source>
        <translation>La nota se ha eliminado en otro lugar.</translation>
    </message>
</context>
<context>
    <name>QBNoteEditorViewController</name>
    <message>
        <source>Attach Files</source>
        <translation>Adjuntar archivos</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Negrita</translation>
    </message>
    <message>
        <source>Italic</source>
        <translation>Cursiva</translation>
    </message>
    <message>
        <source>Underline</source>
        <translation>Subrayado</translation>
    </message>
    <message>
        <source>Strikethrough</source>
        <translation>Tachado</translation>
    </message>
    <message>
        <source>Highlight</source>
        <translation>Resaltado</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>Código</translation>
    </message>
    <message>
        <source>Bulleted List</source>
        <translation>Lista con viñetas</translation>
    </message>
    <message>
        <source>Numbered List</source>
        <translation>Lista numerada</translation>
    </message>
    <message>
        <source>To-do</source>
        <translation>Tarea</translation>
    </message>
    <message>
        <source>Quote</source>
        <translation>Cita</translation>
    </message>
    <message>
        <source>Code Block</source>
        <translation>Bloque de código</translation>
    </message>
    <message>
        <source>Line Separator</source>
        <translation>Línea de separación</translation>
    </message>
    <message>
        <source>Heading %1</source>
        <translation>Título %1</translation>
    </message>
    <message>
        <source>No Heading</source>
        <translation>Sin título</translation>
    </message>
    <message>
        <source>Complete To-do</source>
        <translation>Completar la tarea</translation>
    </message>
    <message>
        <source>Indent</source>
        <translation>Aumentar sangría</translation>
    </message>
    <message>
        <source>Outdent</source>
        <translation>Reducir sangría</translation>
    </message>
    <message>
        <source>Move Line Up</source>
        <translation>Subir la línea</translation>
    </message>
    <message>
        <source>Move Line Down</source>
        <translation>Bajar la línea</translation>
    </message>
    <message>
        <source>Fold Completed To-dos</source>
        <translation>Plegar las tareas completadas</translation>
    </message>
    <message>
        <source>Unfold Completed To-dos</source>
        <translation>Desplegar las tareas completadas</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>Enlace</translation>
    </message>
    <message>
        <source>Link to Note</source>
        <translation>Enlace a una nota</translation>
    </message>
    <message>
        <source>Attach Files…</source>
        <translation>Adjuntar archivos…</translation>
    </message>
    <message>
        <source>Paste as Plain Text</source>
        <translation>Pegar como texto sin formato</translation>
    </message>
    <message>
        <source>Complete Tag or Link</source>
        <translation>Completar etiqueta o enlace</translation>
    </message>
    <message>
        <source>Find in Note…</source>
        <translation>Buscar en la nota…</translation>
    </message>
    <message>
        <source>Find and Replace…</source>
        <translation>Buscar y reemplazar…</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Buscar siguiente</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Buscar anterior</translation>
    </message>
    <message>
        <source>Typewriter Scrolling</source>
        <translation>Desplazamiento de máquina de escribir</translation>
    </message>
    <message>
        <source>Focus on Paragraph</source>
        <translation>Foco en el párrafo</translation>
    </message>
    <message>
        <source>Format Bar</source>
        <translation>Barra de formato</translation>
    </message>
    <message>
        <source>Note Information</source>
        <translation>Información de la nota</translation>
    </message>
    <message>
        <source>Heading</source>
        <translation>Título</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Imagen</translation>
    </message>
    <message>
        <source>Paste as Code Block</source>
        <translation>Pegar como bloque de código</translation>
    </message>
    <message>
        <source>Copy as Text</source>
        <translation>Copiar como texto</translation>
    </message>
    <message>
        <source>Copy as Text Without Tags</source>
        <translation>Copiar como texto sin etiquetas</translation>
    </message>
    <message>
        <source>Note From Selection</source>
        <translation>Nota a partir de la selección</translation>
    </message>
    <message>
        <source>Open Link</source>
        <translation>Abrir el enlace</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Ampliar</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Reducir</translation>
    </message>
    <message>
        <source>Actual Size</source>
        <translation>Tamaño real</translation>
    </message>
    <message>
        <source>Wider Lines</source>
        <translation>Líneas más anchas</translation>
    </message>
    <message>
        <source>Narrower Lines</source>
        <translation>Líneas más estrechas</translation>
    </message>
    <message>
        <source>Copy As</source>
        <translation>Copiar como</translation>
    </message>
    <message>
        <source>Paste As</source>
        <translation>Pegar como</translation>
    </message>
    <message>
        <source>Show Notes with #%1</source>
        <translation>Mostrar las notas con #%1</translation>
    </message>
    <message>
        <source>Open Note</source>
        <translation>Abrir la nota</translation>
    </message>
    <message>
        <source>Copy Link</source>
        <translation>Copiar el enlace</translation>
    </message>
    <message>
        <source>Edit Link</source>
        <translation>Editar el enlace</translation>
    </message>
    <message>
        <source>Unfold</source>
        <translation>Desplegar</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message>
        <source>Save As…</source>
        <translation>Guardar como…</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>Mostrar en la carpeta</translation>
    </message>
    <message>
        <source>Save Attachment</source>
        <translation>Guardar el archivo adjunto</translation>
    </message>
    <message>
        <source>Keyboard to Next Part</source>
        <translation>Teclado a la parte siguiente</translation>
    </message>
    <message>
        <source>Keyboard to Previous Part</source>
        <translation>Teclado a la parte anterior</translation>
    </message>
</context>
<context>
    <name>QBNoteTableCellTextRenderer</name>
    <message>
        <source>A wonderful new note</source>
        <translation>Una maravillosa nota nueva</translation>
    </message>
    <message>
        <source>Keep calm and write something</source>
        <translation>Mantenga la calma y escriba algo</translation>
    </message>
    <message>
        <source>Conflicted</source>
        <translation>En conflicto</translation>
    </message>
</context>
<context>
    <name>QBNoteTextView</name>
    <message>
        <source>Undo</source>
        <translation>Deshacer</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Rehacer</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Cortar</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Pegar</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Seleccionar todo</translation>
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
        <translation>Fijar notas</translation>
    </message>
    <message>
        <source>Unpin notes</source>
        <translation>Dejar de fijar notas</translation>
    </message>
    <message>
        <source>Archive notes</source>
        <translation>Archivar notas</translation>
    </message>
    <message>
        <source>Unarchive notes</source>
        <translation>Desarchivar notas</translation>
    </message>
    <message>
        <source>Restore notes</source>
        <translation>Restaurar notas</translation>
    </message>
    <message>
        <source>Delete notes</source>
        <translation>Eliminar notas</translation>
    </message>
    <message>
        <source>Are you sure you want to permanently delete the selected notes?</source>
        <translation>¿Seguro que desea eliminar definitivamente las notas seleccionadas?</translation>
    </message>
    <message>
        <source>Do not show this warning again.</source>
        <translation>No volver a mostrar esta advertencia.</translation>
    </message>
    <message>
        <source>Duplicate notes</source>
        <translation>Duplicar notas</translation>
    </message>
    <message>
        <source>Merge notes</source>
        <translation>Combinar notas</translation>
    </message>
    <message>
        <source>Unmerge notes</source>
        <translation>Separar notas</translation>
    </message>
    <message>
        <source>Remove tag</source>
        <translation>Quitar la etiqueta</translation>
    </message>
    <message>
        <source>Re-add tag</source>
        <translation>Volver a poner la etiqueta</translation>
    </message>
    <message>
        <source>Are you sure you want to permanently delete all notes in the trash?</source>
        <translation>¿Seguro que desea eliminar definitivamente todas las notas de la papelera?</translation>
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
        <translation>%1&#xa0;mes.</translation>
    </message>
    <message>
        <source>%1w</source>
        <translation>%1&#xa0;sem.</translation>
    </message>
    <message>
        <source>%1d</source>
        <translation>%1&#xa0;d</translation>
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
        <translation>ahora</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Notes</source>
        <translation>Notas</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Archivo</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>Papelera</translation>
    </message>
    <message>
        <source>Untagged</source>
        <translation>Sin etiquetas</translation>
    </message>
    <message>
        <source>Todo</source>
        <translation>Tareas</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Hoy</translation>
    </message>
    <message>
        <source>Sample Notes</source>
        <translation>Notas de ejemplo</translation>
    </message>
</context>
<context>
    <name>WindowFrontEnd</name>
    <message>
        <source>Another Quib has them open, and cannot be reached from here. Go on in its window, or quit it and start Quib again.</source>
        <translation>Otro Quib las tiene abiertas y desde aquí no se puede contactar con él. Continúe en su ventana, o ciérrelo e inicie Quib de nuevo.</translation>
    </message>
    <message>
        <source>Quib keeps its notes in this folder, and cannot write to it (%1). Make that possible, and start Quib again.</source>
        <translation>Quib guarda las notas en esta carpeta y no puede escribir en ella (%1). Haga que sea posible e inicie Quib de nuevo.</translation>
    </message>
    <message>
        <source>Your notes are in use</source>
        <translation>Sus notas están en uso</translation>
    </message>
    <message>
        <source>Your notes cannot be written to</source>
        <translation>No se puede escribir en sus notas</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>Mostrar la carpeta</translation>
    </message>
</context>
<context>
    <name>quib::AboutPage</name>
    <message>
        <source>Version %1</source>
        <translation>Versión %1</translation>
    </message>
    <message>
        <source>Notes in plain text, kept on this computer.</source>
        <translation>Notas en texto sin formato, guardadas en este equipo.</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>Copy the versions</source>
        <translation>Copiar las versiones</translation>
    </message>
    <message>
        <source>For a bug report</source>
        <translation>Para informar de un fallo</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>Bibliotecas</translation>
    </message>
    <message>
        <source>Their licences in full come with their packages, in %1.</source>
        <translation>Sus licencias completas vienen con sus paquetes, en %1.</translation>
    </message>
</context>
<context>
    <name>quib::AccessibleNoteTextView</name>
    <message>
        <source>Checks or unchecks the item at the caret</source>
        <translation>Marca o desmarca el elemento del cursor</translation>
    </message>
</context>
<context>
    <name>quib::AutomationPage</name>
    <message>
        <source>Actions</source>
        <translation>Acciones</translation>
    </message>
    <message>
        <source>Scripts, launchers and other programs drive Quib by addresses. They can make notes, add to them, open them and search:</source>
        <translation>Los scripts, lanzadores y otros programas controlan Quib mediante direcciones. Pueden crear notas, ampliarlas, abrirlas y buscar:</translation>
    </message>
    <message>
        <source>Example of an address</source>
        <translation>Ejemplo de dirección</translation>
    </message>
    <message>
        <source>Read More</source>
        <translation>Leer más</translation>
    </message>
    <message>
        <source>All actions with examples</source>
        <translation>Todas las acciones con ejemplos</translation>
    </message>
    <message>
        <source>Token</source>
        <translation>Token</translation>
    </message>
    <message>
        <source>An action that lists your notes or tags answers only to who names this token. It lies in a file that you alone can read, and never leaves this computer. Give it to scripts that you trust.</source>
        <translation>Una acción que enumera notas o etiquetas solo responde a quien indica este token. Está en un archivo que solo usted puede leer y nunca sale de este equipo. Déselo a los scripts en los que confíe.</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Mostrar</translation>
    </message>
    <message>
        <source>Show the token</source>
        <translation>Mostrar el token</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>Copy the token</source>
        <translation>Copiar el token</translation>
    </message>
    <message>
        <source>Renew…</source>
        <translation>Renovar…</translation>
    </message>
    <message>
        <source>Renew the token?</source>
        <translation>¿Renovar el token?</translation>
    </message>
    <message>
        <source>Renew</source>
        <translation>Renovar</translation>
    </message>
    <message>
        <source>This is the new token.</source>
        <translation>Este es el token nuevo.</translation>
    </message>
    <message>
        <source>Renew the token</source>
        <translation>Renovar el token</translation>
    </message>
    <message>
        <source>Scripts that know the old one are shut out.</source>
        <translation>Los scripts que conozcan el anterior quedan excluidos.</translation>
    </message>
    <message>
        <source>Make a Token</source>
        <translation>Crear un token</translation>
    </message>
    <message>
        <source>There is no token yet</source>
        <translation>Aún no hay ningún token</translation>
    </message>
    <message>
        <source>Until there is one, no script reads a list of notes.</source>
        <translation>Mientras no lo haya, ningún script leerá una lista de notas.</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Mensaje</translation>
    </message>
    <message>
        <source>The token is on the clipboard.</source>
        <translation>El token está en el portapapeles.</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Atrás</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Ocultar</translation>
    </message>
    <message>
        <source>Hide the token</source>
        <translation>Ocultar el token</translation>
    </message>
</context>
<context>
    <name>quib::CompletionPopup</name>
    <message>
        <source>Completions</source>
        <translation>Sugerencias</translation>
    </message>
</context>
<context>
    <name>quib::DesktopIntegration</name>
    <message>
        <source>The desktop has Quib’s shortcuts now; its keyboard settings give them keys.</source>
        <translation>El escritorio ya conoce los atajos de Quib; las teclas se asignan en su configuración del teclado.</translation>
    </message>
    <message>
        <source>These keys reach Quib from everywhere: %1</source>
        <translation>Estas teclas llegan a Quib desde cualquier programa: %1</translation>
    </message>
    <message>
        <source>The desktop has given Quib no shortcuts.</source>
        <translation>El escritorio no ha dado atajos a Quib.</translation>
    </message>
    <message>
        <source>This desktop lets no program take keys everywhere. Its keyboard settings can give a key to the command “%1”.</source>
        <translation>Este escritorio no deja que los programas reciban teclas desde cualquier lugar. En su configuración del teclado se puede asignar una tecla al comando «%1».</translation>
    </message>
    <message>
        <source>Copy Command</source>
        <translation>Copiar el comando</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>Nota rápida</translation>
    </message>
    <message>
        <source>New Note</source>
        <translation>Nota nueva</translation>
    </message>
    <message>
        <source>Search Notes</source>
        <translation>Buscar en las notas</translation>
    </message>
    <message>
        <source>Show Quib</source>
        <translation>Mostrar Quib</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Write a quick note</source>
        <translation>Escribir una nota rápida</translation>
    </message>
    <message>
        <source>Search the notes</source>
        <translation>Buscar en las notas</translation>
    </message>
</context>
<context>
    <name>quib::DetachedWindow</name>
    <message>
        <source>Close Window</source>
        <translation>Cerrar la ventana</translation>
    </message>
    <message>
        <source>Untitled note</source>
        <translation>Nota sin título</translation>
    </message>
    <message>
        <source>Keep Above Others</source>
        <translation>Mantener por encima</translation>
    </message>
    <message>
        <source>All Commands…</source>
        <translation>Todos los comandos…</translation>
    </message>
    <message>
        <source>Find a command</source>
        <translation>Buscar un comando</translation>
    </message>
</context>
<context>
    <name>quib::EditorPage</name>
    <message>
        <source>Text</source>
        <translation>Texto</translation>
    </message>
    <message>
        <source>Sample of a note</source>
        <translation>Ejemplo de nota</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Tipo de letra</translation>
    </message>
    <message>
        <source>Where this computer lacks a font, one of the same kind stands in.</source>
        <translation>Si falta un tipo de letra en este equipo, se usa otro parecido.</translation>
    </message>
    <message>
        <source> pt</source>
        <comment>points, behind a font size</comment>
        <translation>&#xa0;pt</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>Tamaño</translation>
    </message>
    <message>
        <source>Line height</source>
        <translation>Altura de línea</translation>
    </message>
    <message>
        <source>× %1</source>
        <comment>a multiple</comment>
        <translation>×&#xa0;%1</translation>
    </message>
    <message>
        <source>Line width</source>
        <translation>Ancho de línea</translation>
    </message>
    <message>
        <source>%1 em</source>
        <comment>width of a line</comment>
        <translation>%1&#xa0;em</translation>
    </message>
    <message>
        <source>Space between paragraphs</source>
        <translation>Espacio entre párrafos</translation>
    </message>
    <message>
        <source>%1 em</source>
        <comment>space</comment>
        <translation>%1&#xa0;em</translation>
    </message>
    <message>
        <source>Use the Font’s Own</source>
        <translation>Usar los del tipo de letra</translation>
    </message>
    <message>
        <source>Sizes and spaces</source>
        <translation>Tamaños y espacios</translation>
    </message>
    <message>
        <source>Every font comes with sizes that suit it.</source>
        <translation>Cada tipo de letra trae los tamaños que le convienen.</translation>
    </message>
    <message>
        <source>Markup</source>
        <translation>Marcado</translation>
    </message>
    <message>
        <source>Notes are written in</source>
        <translation>Las notas se escriben en</translation>
    </message>
    <message>
        <source>Your notes stay as they are written: this decides how their signs are read.</source>
        <translation>Las notas quedan como están escritas: esto decide cómo se leen sus signos.</translation>
    </message>
    <message>
        <source>Quib’s markup</source>
        <translation>Marcado de Quib</translation>
    </message>
    <message>
        <source>Markdown</source>
        <translation>Markdown</translation>
    </message>
    <message>
        <source>bold</source>
        <translation>negrita</translation>
    </message>
    <message>
        <source>italic</source>
        <translation>cursiva</translation>
    </message>
    <message>
        <source>underlined</source>
        <translation>subrayado</translation>
    </message>
    <message>
        <source>struck</source>
        <translation>tachado</translation>
    </message>
    <message>
        <source>to do</source>
        <translation>por hacer</translation>
    </message>
    <message>
        <source>done</source>
        <translation>hecho</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>Escritura</translation>
    </message>
    <message>
        <source>Complete tags, links and languages</source>
        <translation>Completar etiquetas, enlaces y lenguajes</translation>
    </message>
    <message>
        <source>A list of what fits appears while you type.</source>
        <translation>Mientras escribe aparece una lista de lo que encaja.</translation>
    </message>
    <message>
        <source>Fold completed to-dos</source>
        <translation>Plegar las tareas completadas</translation>
    </message>
    <message>
        <source>What is ticked off takes one short line until you open it.</source>
        <translation>Lo marcado ocupa una sola línea corta hasta que lo abra.</translation>
    </message>
    <message>
        <source>Typewriter scrolling</source>
        <translation>Desplazamiento de máquina de escribir</translation>
    </message>
    <message>
        <source>The line you write in stays at the same height.</source>
        <translation>La línea en la que escribe queda a la misma altura.</translation>
    </message>
    <message>
        <source>Focus on the paragraph</source>
        <translation>Foco en el párrafo</translation>
    </message>
    <message>
        <source>All but the paragraph you write in stands back.</source>
        <translation>Todo se atenúa salvo el párrafo en el que escribe.</translation>
    </message>
    <message>
        <source>Show the format bar</source>
        <translation>Mostrar la barra de formato</translation>
    </message>
    <message>
        <source>Check the spelling</source>
        <translation>Revisar la ortografía</translation>
    </message>
    <message>
        <source>Misspelt words get a wavy line, in the languages of your dictionaries.</source>
        <translation>Las palabras mal escritas reciben una línea ondulada, en los idiomas de sus diccionarios.</translation>
    </message>
    <message>
        <source>There is no dictionary on this computer. Packages of dictionaries are named %1.</source>
        <translation>No hay ningún diccionario en este equipo. Los paquetes de diccionarios se llaman %1.</translation>
    </message>
    <message>
        <source>Languages of the spelling</source>
        <translation>Idiomas de la ortografía</translation>
    </message>
    <message>
        <source>Which of them a paragraph is in is told by its words.</source>
        <translation>El idioma de cada párrafo se reconoce por sus palabras.</translation>
    </message>
    <message>
        <source>As the Desktop</source>
        <translation>Como el escritorio</translation>
    </message>
    <message numerus="yes">
        <source>%n languages</source>
        <translation>
            <numerusform>%n idioma</numerusform>
            <numerusform>%n idiomas</numerusform>
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
        <translation>Buscar en la nota</translation>
    </message>
    <message>
        <source>Find in note</source>
        <translation>Buscar en la nota</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Match Case</source>
        <translation>Distinguir mayúsculas</translation>
    </message>
    <message>
        <source>Whole Words</source>
        <translation>Palabras completas</translation>
    </message>
    <message>
        <source>Regular Expression</source>
        <translation>Expresión regular</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Buscar anterior</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Buscar siguiente</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Replace with</source>
        <translation>Reemplazar por</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Reemplazar</translation>
    </message>
    <message>
        <source>Replace All</source>
        <translation>Reemplazar todo</translation>
    </message>
    <message>
        <source>Not a valid pattern</source>
        <translation>Patrón no válido</translation>
    </message>
    <message>
        <source>Too much to replace</source>
        <translation>Demasiado que reemplazar</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>No encontrado</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
    <message numerus="yes">
        <source>%n replaced</source>
        <translation>
            <numerusform>%n reemplazo</numerusform>
            <numerusform>%n reemplazos</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 of more than %2</source>
        <translation>%1 de más de %2</translation>
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
        <translation>Más formatos</translation>
    </message>
</context>
<context>
    <name>quib::GeneralPage</name>
    <message>
        <source>Lists</source>
        <translation>Listas</translation>
    </message>
    <message>
        <source>Sort notes by</source>
        <translation>Ordenar las notas por</translation>
    </message>
    <message>
        <source>Date Changed</source>
        <translation>Fecha de modificación</translation>
    </message>
    <message>
        <source>Date Created</source>
        <translation>Fecha de creación</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Título</translation>
    </message>
    <message>
        <source>Order of notes</source>
        <translation>Orden de las notas</translation>
    </message>
    <message>
        <source>Pinned notes stand above all others.</source>
        <translation>Las notas fijadas quedan por encima de las demás.</translation>
    </message>
    <message>
        <source>Descending</source>
        <translation>Descendente</translation>
    </message>
    <message>
        <source>Ascending</source>
        <translation>Ascendente</translation>
    </message>
    <message>
        <source>Sort tags by</source>
        <translation>Ordenar las etiquetas por</translation>
    </message>
    <message>
        <source>Number of Notes</source>
        <translation>Número de notas</translation>
    </message>
    <message>
        <source>Order of tags</source>
        <translation>Orden de las etiquetas</translation>
    </message>
    <message>
        <source>Symbols for tags</source>
        <translation>Símbolos para las etiquetas</translation>
    </message>
    <message>
        <source>Tags in the sidebar get a symbol that fits their name.</source>
        <translation>Las etiquetas de la barra lateral reciben un símbolo acorde con su nombre.</translation>
    </message>
    <message>
        <source>Links</source>
        <translation>Enlaces</translation>
    </message>
    <message>
        <source>Look up the titles of copied links</source>
        <translation>Buscar los títulos de los enlaces copiados</translation>
    </message>
    <message>
        <source>A web address on the clipboard gets the title of its page before you paste it. Quib asks that page for it.</source>
        <translation>Una dirección web del portapapeles recibe el título de su página antes de pegarla. Quib se lo pide a esa página.</translation>
    </message>
    <message>
        <source>On this computer</source>
        <translation>En este equipo</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>Mostrar la carpeta</translation>
    </message>
    <message>
        <source>Show the folder of the notes</source>
        <translation>Mostrar la carpeta de las notas</translation>
    </message>
    <message>
        <source>Notes and attachments</source>
        <translation>Notas y archivos adjuntos</translation>
    </message>
    <message>
        <source>Write a log file</source>
        <translation>Escribir un archivo de registro</translation>
    </message>
    <message>
        <source>For finding out what went wrong. The log has no text of your notes.</source>
        <translation>Para averiguar qué ha fallado. El registro no contiene texto de sus notas.</translation>
    </message>
    <message>
        <source>Show the folder of the logs</source>
        <translation>Mostrar la carpeta de los registros</translation>
    </message>
    <message>
        <source>Logs</source>
        <translation>Registros</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>Empezar de nuevo</translation>
    </message>
    <message>
        <source>Reset…</source>
        <translation>Restablecer…</translation>
    </message>
    <message>
        <source>Reset all preferences?</source>
        <translation>¿Restablecer todas las preferencias?</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Restablecer</translation>
    </message>
    <message>
        <source>Reset all preferences</source>
        <translation>Restablecer todas las preferencias</translation>
    </message>
    <message>
        <source>Themes, fonts, lists and writing go back to how they were. No note changes.</source>
        <translation>Los temas, tipos de letra, listas y escritura vuelven a su estado inicial. Ninguna nota cambia.</translation>
    </message>
</context>
<context>
    <name>quib::InformationPanel</name>
    <message>
        <source>Note Information</source>
        <translation>Información de la nota</translation>
    </message>
    <message>
        <source>Words</source>
        <translation>Palabras</translation>
    </message>
    <message>
        <source>Characters</source>
        <translation>Caracteres</translation>
    </message>
    <message>
        <source>Paragraphs</source>
        <translation>Párrafos</translation>
    </message>
    <message>
        <source>Reading time</source>
        <translation>Tiempo de lectura</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Modificada</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Creada</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Índice</translation>
    </message>
    <message>
        <source>Notes That Link Here</source>
        <translation>Notas que enlazan aquí</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1&#xa0;min</translation>
    </message>
    <message>
        <source>Headings of the note stand here.</source>
        <translation>Aquí aparecen los títulos de la nota.</translation>
    </message>
    <message>
        <source>No note links here yet.</source>
        <translation>Ninguna nota enlaza aquí todavía.</translation>
    </message>
    <message>
        <source>%1, heading %2</source>
        <translation>%1, título %2</translation>
    </message>
</context>
<context>
    <name>quib::InlineQuestion</name>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>quib::MessageBar</name>
    <message>
        <source>Close the message</source>
        <translation>Cerrar el mensaje</translation>
    </message>
</context>
<context>
    <name>quib::NoteListModel</name>
    <message>
        <source>Untitled note</source>
        <translation>Nota sin título</translation>
    </message>
    <message>
        <source>pinned</source>
        <translation>fijada</translation>
    </message>
    <message>
        <source>in conflict with another version</source>
        <translation>en conflicto con otra versión</translation>
    </message>
    <message>
        <source>%1 of %2 done</source>
        <translation>%1 de %2 hechas</translation>
    </message>
</context>
<context>
    <name>quib::NoteListView</name>
    <message>
        <source>Notes</source>
        <translation>Notas</translation>
    </message>
    <message numerus="yes">
        <source>%n notes</source>
        <translation>
            <numerusform>%n nota</numerusform>
            <numerusform>%n notas</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::NoteTextViewSpelling</name>
    <message>
        <source>Looking for Words…</source>
        <translation>Buscando palabras…</translation>
    </message>
    <message>
        <source>Add “%1” to the Dictionary</source>
        <translation>Añadir «%1» al diccionario</translation>
    </message>
    <message>
        <source>Ignore “%1”</source>
        <translation>Ignorar «%1»</translation>
    </message>
    <message>
        <source>No Other Words Found</source>
        <translation>No se encontraron otras palabras</translation>
    </message>
</context>
<context>
    <name>quib::OverlayScrollBar</name>
    <message>
        <source>Scroll bar</source>
        <translation>Barra de desplazamiento</translation>
    </message>
</context>
<context>
    <name>quib::PreferencesWindow</name>
    <message>
        <source>Preferences</source>
        <translation>Preferencias</translation>
    </message>
    <message>
        <source>Pages of the preferences</source>
        <translation>Páginas de las preferencias</translation>
    </message>
    <message>
        <source>General</source>
        <translation>General</translation>
    </message>
    <message>
        <source>Editor</source>
        <translation>Editor</translation>
    </message>
    <message>
        <source>Themes</source>
        <translation>Temas</translation>
    </message>
    <message>
        <source>Automation</source>
        <translation>Automatización</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Atajos</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Acerca de</translation>
    </message>
</context>
<context>
    <name>quib::QuickNoteWindow</name>
    <message>
        <source>Saved as you type. Escape closes.</source>
        <translation>Se guarda mientras escribe. Esc cierra.</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>Nota rápida</translation>
    </message>
    <message>
        <source>Open in Quib</source>
        <translation>Abrir en Quib</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>Cerrar la ventana</translation>
    </message>
    <message>
        <source>Go on in the main window (Ctrl+O)</source>
        <translation>Continuar en la ventana principal (Ctrl+O)</translation>
    </message>
</context>
<context>
    <name>quib::SavingMessage</name>
    <message>
        <source>The file of your notes is damaged, and parts of it cannot be read. Nothing is written to it any more. Quit Quib, and run “quibctl check” in a terminal to learn what is whole.</source>
        <translation>El archivo de sus notas está dañado y hay partes que no se pueden leer. Ya no se escribe nada en él. Cierre Quib y ejecute «quibctl check» en un terminal para saber qué está intacto.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: the disk is full. Make some room on it; Quib keeps trying.</source>
        <translation>No se pueden guardar sus notas: el disco está lleno. Libere algo de espacio; Quib sigue intentándolo.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: their folder cannot be written to. Quib keeps trying.</source>
        <translation>No se pueden guardar sus notas: no se puede escribir en su carpeta. Quib sigue intentándolo.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: another program does not let go of them. Quib keeps trying.</source>
        <translation>No se pueden guardar sus notas: otro programa no las suelta. Quib sigue intentándolo.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved. Quib keeps trying. The reason: %1</source>
        <translation>No se pueden guardar sus notas. Quib sigue intentándolo. El motivo: %1</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Reintentar</translation>
    </message>
    <message>
        <source>%1 What you wrote last may be lost if you quit now.</source>
        <comment>%1 is one or more sentences</comment>
        <translation>%1 Si sale ahora, puede perderse lo último que escribió.</translation>
    </message>
    <message>
        <source>Quit Without Saving</source>
        <translation>Salir sin guardar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>quib::SearchField</name>
    <message>
        <source>notes with something left to do</source>
        <translation>notas con algo por hacer</translation>
    </message>
    <message>
        <source>notes where everything is done</source>
        <translation>notas con todo hecho</translation>
    </message>
    <message>
        <source>notes with to-dos</source>
        <translation>notas con tareas</translation>
    </message>
    <message>
        <source>changed today</source>
        <translation>modificadas hoy</translation>
    </message>
    <message>
        <source>changed yesterday</source>
        <translation>modificadas ayer</translation>
    </message>
    <message>
        <source>changed in the last seven days</source>
        <translation>modificadas en los últimos siete días</translation>
    </message>
    <message>
        <source>changed on a day: @date(2024-12-31)</source>
        <translation>modificadas un día: @date(2024-12-31)</translation>
    </message>
    <message>
        <source>created on a day: @cdate(2024-12-31)</source>
        <translation>creadas un día: @cdate(2024-12-31)</translation>
    </message>
    <message>
        <source>notes with pictures</source>
        <translation>notas con imágenes</translation>
    </message>
    <message>
        <source>notes with files</source>
        <translation>notas con archivos</translation>
    </message>
    <message>
        <source>notes with pictures or files</source>
        <translation>notas con imágenes o archivos</translation>
    </message>
    <message>
        <source>notes with code</source>
        <translation>notas con código</translation>
    </message>
    <message>
        <source>notes with tags</source>
        <translation>notas con etiquetas</translation>
    </message>
    <message>
        <source>notes without tags</source>
        <translation>notas sin etiquetas</translation>
    </message>
    <message>
        <source>Search notes</source>
        <translation>Buscar en las notas</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Words, &quot;phrases&quot; and #tags; a minus excludes; @ offers more</source>
        <translation>Palabras, &quot;frases&quot; y #etiquetas; el signo menos excluye; @ ofrece más</translation>
    </message>
    <message>
        <source>End the search</source>
        <translation>Terminar la búsqueda</translation>
    </message>
    <message>
        <source>word</source>
        <translation>palabra</translation>
    </message>
    <message>
        <source>notes with the word, or with a word that has it in it</source>
        <translation>notas con la palabra, o con otra que la contenga</translation>
    </message>
    <message>
        <source>&quot;two words&quot;</source>
        <translation>&quot;dos palabras&quot;</translation>
    </message>
    <message>
        <source>notes with just these words, one behind the other</source>
        <translation>notas con justo estas palabras, una tras otra</translation>
    </message>
    <message>
        <source>-word</source>
        <translation>-palabra</translation>
    </message>
    <message>
        <source>notes without the word</source>
        <translation>notas sin la palabra</translation>
    </message>
    <message>
        <source>#tag</source>
        <translation>#etiqueta</translation>
    </message>
    <message>
        <source>notes with the tag in their text</source>
        <translation>notas con la etiqueta en el texto</translation>
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
        <translation>Ningún atajo coincide.</translation>
    </message>
    <message>
        <source>Search commands and keys</source>
        <translation>Buscar comandos y teclas</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Atajos de teclado</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Comando</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Teclas</translation>
    </message>
</context>
<context>
    <name>quib::SidebarModel</name>
    <message>
        <source>Tags</source>
        <translation>Etiquetas</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n note(s)</source>
        <translation>
            <numerusform>%1, %n nota</numerusform>
            <numerusform>%1, %n notas</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::SidebarView</name>
    <message>
        <source>Lists and tags</source>
        <translation>Listas y etiquetas</translation>
    </message>
</context>
<context>
    <name>quib::SpokenNoteText</name>
    <message>
        <source>checked item</source>
        <translation>elemento marcado</translation>
    </message>
    <message>
        <source>unchecked item</source>
        <translation>elemento sin marcar</translation>
    </message>
    <message>
        <source>heading %1</source>
        <translation>título %1</translation>
    </message>
    <message>
        <source>picture %1</source>
        <translation>imagen %1</translation>
    </message>
    <message>
        <source>file %1</source>
        <translation>archivo %1</translation>
    </message>
    <message>
        <source>separator</source>
        <translation>separador</translation>
    </message>
    <message>
        <source>folded text</source>
        <translation>texto plegado</translation>
    </message>
    <message>
        <source>link to a note</source>
        <translation>enlace a una nota</translation>
    </message>
    <message>
        <source>link</source>
        <translation>enlace</translation>
    </message>
</context>
<context>
    <name>quib::SymbolPicker</name>
    <message>
        <source>Symbol of the tag</source>
        <translation>Símbolo de la etiqueta</translation>
    </message>
    <message>
        <source>Symbols</source>
        <translation>Símbolos</translation>
    </message>
    <message>
        <source>By the Tag’s Name</source>
        <translation>Según el nombre de la etiqueta</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>Etiqueta</translation>
    </message>
    <message>
        <source>Animal</source>
        <translation>Animal</translation>
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
        <translation>Bicho</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Calendario</translation>
    </message>
    <message>
        <source>Car</source>
        <translation>Coche</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>Código</translation>
    </message>
    <message>
        <source>Film</source>
        <translation>Película</translation>
    </message>
    <message>
        <source>Food</source>
        <translation>Comida</translation>
    </message>
    <message>
        <source>Game</source>
        <translation>Juego</translation>
    </message>
    <message>
        <source>Gift</source>
        <translation>Regalo</translation>
    </message>
    <message>
        <source>Health</source>
        <translation>Salud</translation>
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
        <translation>Enlace</translation>
    </message>
    <message>
        <source>Money</source>
        <translation>Dinero</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Música</translation>
    </message>
    <message>
        <source>People</source>
        <translation>Personas</translation>
    </message>
    <message>
        <source>Photo</source>
        <translation>Foto</translation>
    </message>
    <message>
        <source>Plant</source>
        <translation>Planta</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Proyecto</translation>
    </message>
    <message>
        <source>School</source>
        <translation>Escuela</translation>
    </message>
    <message>
        <source>Science</source>
        <translation>Ciencia</translation>
    </message>
    <message>
        <source>Shopping</source>
        <translation>Compras</translation>
    </message>
    <message>
        <source>Sport</source>
        <translation>Deporte</translation>
    </message>
    <message>
        <source>To-do</source>
        <translation>Tarea</translation>
    </message>
    <message>
        <source>Travel</source>
        <translation>Viajes</translation>
    </message>
    <message>
        <source>Work</source>
        <translation>Trabajo</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>Escritura</translation>
    </message>
</context>
<context>
    <name>quib::ThemeGallery</name>
    <message>
        <source>Themes</source>
        <translation>Temas</translation>
    </message>
</context>
<context>
    <name>quib::ThemeGalleryModel</name>
    <message>
        <source>%1, in use</source>
        <comment>theme</comment>
        <translation>%1, en uso</translation>
    </message>
    <message>
        <source>%1, in use when the desktop is light</source>
        <comment>theme</comment>
        <translation>%1, en uso con el escritorio claro</translation>
    </message>
    <message>
        <source>%1, in use when the desktop is dark</source>
        <comment>theme</comment>
        <translation>%1, en uso con el escritorio oscuro</translation>
    </message>
</context>
<context>
    <name>quib::ThemePreview</name>
    <message>
        <source>%1Low tide%2 is at nine. Take the %3slow path%4 along the harbour.</source>
        <translation>La %1bajamar%2 es a las nueve. Toma el %3camino lento%4 junto al puerto.</translation>
    </message>
    <message>
        <source>A day by the sea</source>
        <translation>Un día junto al mar</translation>
    </message>
    <message>
        <source>Pack the ::blue:: bag</source>
        <translation>Preparar la bolsa ::azul::</translation>
    </message>
    <message>
        <source>Buy bread and [[Cheese]]</source>
        <translation>Comprar pan y [[Queso]]</translation>
    </message>
    <message>
        <source>The sea is never late.</source>
        <translation>El mar nunca llega tarde.</translation>
    </message>
    <message>
        <source>travel/coast</source>
        <translation>viajes/costa</translation>
    </message>
</context>
<context>
    <name>quib::ThemesPage</name>
    <message>
        <source>Choose the theme for a light desktop</source>
        <translation>Elegir el tema para el escritorio claro</translation>
    </message>
    <message>
        <source>Choose the theme for a dark desktop</source>
        <translation>Elegir el tema para el escritorio oscuro</translation>
    </message>
    <message>
        <source>Light desktop: %1</source>
        <translation>Escritorio claro: %1</translation>
    </message>
    <message>
        <source>Dark desktop: %1</source>
        <translation>Escritorio oscuro: %1</translation>
    </message>
    <message>
        <source>Quib follows the desktop, which is dark at the moment.</source>
        <translation>Quib sigue al escritorio, que ahora es oscuro.</translation>
    </message>
    <message>
        <source>Quib follows the desktop, which is light at the moment.</source>
        <translation>Quib sigue al escritorio, que ahora es claro.</translation>
    </message>
</context>
</TS>
