<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>QBAppDelegate</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>et %n autre</numerusform>
            <numerusform>et %n autres</numerusform>
        </translation>
    </message>
    <message>
        <source>These files cannot be opened</source>
        <translation>Impossible d’ouvrir ces fichiers</translation>
    </message>
    <message>
        <source>This version of Quib opens pictures only. Nothing was imported from:
%1</source>
        <translation>Cette version de Quib n’ouvre que des images. Rien n’a été importé de&#xa0;:
%1</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>These pictures could not be copied</source>
        <translation>Impossible de copier ces images</translation>
    </message>
    <message>
        <source>Something went wrong</source>
        <translation>Une erreur est survenue</translation>
    </message>
    <message>
        <source>Just a moment and Quib will be ready!</source>
        <translation>Un instant, Quib est bientôt prêt&#x202f;!</translation>
    </message>
    <message>
        <source>Quib is currently speeding up your notes and migrating the database to a new version.
We highly suggest not to exit from Quib during the whole process.</source>
        <translation>Quib accélère vos notes et migre la base de données vers une nouvelle version.
Nous vous conseillons vivement de ne pas quitter Quib pendant l’opération.</translation>
    </message>
    <message>
        <source>It was not possible to migrate your database to the new version. Don&apos;t worry your notes are safe, please contact the support team using the &apos;Contact Support&apos; button below and they will help you.</source>
        <translation>La base de données n’a pas pu être migrée vers la nouvelle version. Rassurez-vous, vos notes sont en sécurité&#x202f;; contactez l’assistance avec le bouton «&#xa0;Contacter l’assistance&#xa0;» ci-dessous.</translation>
    </message>
    <message>
        <source>Contact Support</source>
        <translation>Contacter l’assistance</translation>
    </message>
    <message>
        <source>Your notes could not be opened</source>
        <translation>Impossible d’ouvrir vos notes</translation>
    </message>
    <message>
        <source>The file that holds them is damaged, or is no file of Quib&apos;s. Nothing was changed. Put a copy from a backup in its place, and start Quib again.</source>
        <translation>Le fichier qui les contient est endommagé ou n’est pas un fichier de Quib. Rien n’a été modifié. Remplacez-le par une copie de sauvegarde, puis relancez Quib.</translation>
    </message>
    <message>
        <source>Nothing was changed. The reason: %1</source>
        <translation>Rien n’a été modifié. La raison : %1</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>Afficher le dossier</translation>
    </message>
</context>
<context>
    <name>QBMainWindowController</name>
    <message>
        <source>New Note</source>
        <translation>Nouvelle note</translation>
    </message>
    <message>
        <source>New Note in New Window</source>
        <translation>Nouvelle note dans une nouvelle fenêtre</translation>
    </message>
    <message>
        <source>Open Quickly…</source>
        <translation>Ouvrir rapidement…</translation>
    </message>
    <message>
        <source>Open in New Window</source>
        <translation>Ouvrir dans une nouvelle fenêtre</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Dupliquer</translation>
    </message>
    <message>
        <source>Merge</source>
        <translation>Fusionner</translation>
    </message>
    <message>
        <source>Pin to Top</source>
        <translation>Épingler en haut</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Archiver</translation>
    </message>
    <message>
        <source>Move to Trash</source>
        <translation>Mettre à la corbeille</translation>
    </message>
    <message>
        <source>Put Back</source>
        <translation>Restaurer</translation>
    </message>
    <message>
        <source>Copy Link to Note</source>
        <translation>Copier le lien vers la note</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>Fermer la fenêtre</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Rétablir</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Couper</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Coller</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Tout sélectionner</translation>
    </message>
    <message>
        <source>Search Notes</source>
        <translation>Rechercher dans les notes</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <translation>Préférences…</translation>
    </message>
    <message>
        <source>Rename Tag</source>
        <translation>Renommer l’étiquette</translation>
    </message>
    <message>
        <source>Delete Tag</source>
        <translation>Supprimer l’étiquette</translation>
    </message>
    <message>
        <source>Remove Tag from Notes</source>
        <translation>Retirer l’étiquette des notes</translation>
    </message>
    <message>
        <source>Sidebar, Notes and Editor</source>
        <translation>Barre latérale, notes et éditeur</translation>
    </message>
    <message>
        <source>Notes and Editor</source>
        <translation>Notes et éditeur</translation>
    </message>
    <message>
        <source>Editor Only</source>
        <translation>Éditeur seul</translation>
    </message>
    <message>
        <source>Show or Hide the Sidebar</source>
        <translation>Afficher ou masquer la barre latérale</translation>
    </message>
    <message>
        <source>Full Screen</source>
        <translation>Plein écran</translation>
    </message>
    <message>
        <source>Next Note</source>
        <translation>Note suivante</translation>
    </message>
    <message>
        <source>Previous Note</source>
        <translation>Note précédente</translation>
    </message>
    <message>
        <source>Go to Notes</source>
        <translation>Aller aux notes</translation>
    </message>
    <message>
        <source>Go to Untagged</source>
        <translation>Aller à «&#xa0;Sans étiquette&#xa0;»</translation>
    </message>
    <message>
        <source>Go to Todo</source>
        <translation>Aller à «&#xa0;À faire&#xa0;»</translation>
    </message>
    <message>
        <source>Go to Today</source>
        <translation>Aller à «&#xa0;Aujourd’hui&#xa0;»</translation>
    </message>
    <message>
        <source>Go to Trash</source>
        <translation>Aller à la corbeille</translation>
    </message>
    <message>
        <source>Keyboard to Sidebar</source>
        <translation>Clavier sur la barre latérale</translation>
    </message>
    <message>
        <source>Keyboard to Notes</source>
        <translation>Clavier sur les notes</translation>
    </message>
    <message>
        <source>Keyboard to Editor</source>
        <translation>Clavier sur l’éditeur</translation>
    </message>
    <message>
        <source>All Commands…</source>
        <translation>Toutes les commandes…</translation>
    </message>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Raccourcis clavier</translation>
    </message>
    <message>
        <source>About Quib</source>
        <translation>À propos de Quib</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>É&amp;dition</translation>
    </message>
    <message>
        <source>&amp;Note</source>
        <translation>&amp;Note</translation>
    </message>
    <message>
        <source>&amp;Tag</source>
        <translation>É&amp;tiquette</translation>
    </message>
    <message>
        <source>F&amp;ormat</source>
        <translation>F&amp;ormat</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Affichage</translation>
    </message>
    <message>
        <source>Sort Notes</source>
        <translation>Trier les notes</translation>
    </message>
    <message>
        <source>Theme</source>
        <translation>Thème</translation>
    </message>
    <message>
        <source>&amp;Go</source>
        <translation>A&amp;ller</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>Aid&amp;e</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Plus</translation>
    </message>
    <message>
        <source>Commands for this note</source>
        <translation>Commandes pour cette note</translation>
    </message>
    <message>
        <source>Date Changed</source>
        <translation>Date de modification</translation>
    </message>
    <message>
        <source>Date Created</source>
        <translation>Date de création</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titre</translation>
    </message>
    <message>
        <source>Ascending</source>
        <translation>Croissant</translation>
    </message>
    <message>
        <source>Descending</source>
        <translation>Décroissant</translation>
    </message>
    <message>
        <source>Empty Trash…</source>
        <translation>Vider la corbeille…</translation>
    </message>
    <message>
        <source>The tag #%1 is #%2 now.</source>
        <translation>L’étiquette #%1 s’appelle désormais #%2.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message numerus="yes">
        <source>%n link(s) copied.</source>
        <translation>
            <numerusform>%n lien copié.</numerusform>
            <numerusform>%n liens copiés.</numerusform>
        </translation>
    </message>
    <message>
        <source>Untitled note</source>
        <translation>Note sans titre</translation>
    </message>
    <message>
        <source>Open a note by its title</source>
        <translation>Ouvrir une note par son titre</translation>
    </message>
    <message>
        <source>New note “%1”</source>
        <translation>Nouvelle note «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>Find a command</source>
        <translation>Trouver une commande</translation>
    </message>
    <message>
        <source>Theme: %1</source>
        <translation>Thème&#xa0;: %1</translation>
    </message>
    <message>
        <source>current</source>
        <translation>actuel</translation>
    </message>
    <message>
        <source>Quib</source>
        <translation>Quib</translation>
    </message>
    <message>
        <source>“%1” could not be taken into the note.</source>
        <translation>Impossible d’ajouter «&#xa0;%1&#xa0;» à la note.</translation>
    </message>
    <message>
        <source>No note matches “%1”.</source>
        <translation>Aucune note ne correspond à «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>The trash is empty.</source>
        <translation>La corbeille est vide.</translation>
    </message>
    <message>
        <source>No notes here yet.</source>
        <translation>Il n’y a pas encore de notes ici.</translation>
    </message>
    <message numerus="yes">
        <source>%n notes selected</source>
        <translation>
            <numerusform>%n note sélectionnée</numerusform>
            <numerusform>%n notes sélectionnées</numerusform>
        </translation>
    </message>
    <message>
        <source>Drag them onto a tag, or choose a command from their menu.</source>
        <translation>Faites-les glisser sur une étiquette ou choisissez une commande dans leur menu.</translation>
    </message>
    <message>
        <source>Write your first note</source>
        <translation>Écrivez votre première note</translation>
    </message>
    <message>
        <source>Give it a title, tag it with a #word, tick things off with a dash at the start of a line. Everything is saved as you type.</source>
        <translation>Donnez-lui un titre, étiquetez-la avec un #mot, cochez des choses à faire avec un tiret en début de ligne. Tout est enregistré à mesure que vous écrivez.</translation>
    </message>
    <message>
        <source>No note selected</source>
        <translation>Aucune note sélectionnée</translation>
    </message>
    <message>
        <source>Choose one from the list, or press Ctrl+O to open it by its title.</source>
        <translation>Choisissez-en une dans la liste ou appuyez sur Ctrl+O pour l’ouvrir par son titre.</translation>
    </message>
    <message>
        <source>Unpin</source>
        <translation>Désépingler</translation>
    </message>
    <message>
        <source>Unarchive</source>
        <translation>Désarchiver</translation>
    </message>
    <message>
        <source>Delete Permanently…</source>
        <translation>Supprimer définitivement…</translation>
    </message>
    <message>
        <source>In the trash</source>
        <translation>Dans la corbeille</translation>
    </message>
    <message>
        <source>Archived</source>
        <translation>Archivée</translation>
    </message>
    <message>
        <source>Edited today, %1</source>
        <translation>Modifiée aujourd’hui à %1</translation>
    </message>
    <message>
        <source>HH:mm</source>
        <comment>time of day</comment>
        <translation>HH:mm</translation>
    </message>
    <message>
        <source>Edited %1</source>
        <translation>Modifiée le %1</translation>
    </message>
    <message>
        <source>Undo %1</source>
        <translation>Annuler&#xa0;: %1</translation>
    </message>
    <message>
        <source>Redo %1</source>
        <translation>Rétablir&#xa0;: %1</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>Note rapide</translation>
    </message>
    <message>
        <source>What Can Be Searched For…</source>
        <translation>Ce qui peut être recherché…</translation>
    </message>
    <message>
        <source>Choose Symbol…</source>
        <translation>Choisir un symbole…</translation>
    </message>
    <message>
        <source>Icon in the Tray</source>
        <translation>Icône dans la zone de notification</translation>
    </message>
    <message>
        <source>Shortcuts from Everywhere…</source>
        <translation>Raccourcis depuis tous les programmes…</translation>
    </message>
    <message>
        <source>What can be searched for</source>
        <translation>Ce qui peut être recherché</translation>
    </message>
    <message numerus="yes">
        <source>The tag #%1 was taken out of %n note(s).</source>
        <translation>
            <numerusform>L’étiquette #%1 a été retirée de %n note.</numerusform>
            <numerusform>L’étiquette #%1 a été retirée de %n notes.</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose Symbol</source>
        <translation>Choisir un symbole</translation>
    </message>
    <message>
        <source>“%1” could not be written.</source>
        <translation>Impossible d’écrire «&#xa0;%1&#xa0;».</translation>
    </message>
    <message numerus="yes">
        <source>%n found</source>
        <translation>
            <numerusform>%n trouvée</numerusform>
            <numerusform>%n trouvées</numerusform>
        </translation>
    </message>
    <message>
        <source>Print…</source>
        <translation>Imprimer…</translation>
    </message>
    <message>
        <source>Print Note</source>
        <translation>Imprimer la note</translation>
    </message>
    <message>
        <source>“%1” could not be printed.</source>
        <translation>Impossible d’imprimer «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Aucun résultat</translation>
    </message>
    <message>
        <source>Try fewer words, or look in all notes.</source>
        <translation>Essayez moins de mots, ou cherchez dans toutes les notes.</translation>
    </message>
    <message>
        <source>These notes could not be read.</source>
        <translation>Impossible de lire ces notes.</translation>
    </message>
    <message>
        <source>Your notes could not be read</source>
        <translation>Impossible de lire vos notes</translation>
    </message>
    <message>
        <source>Not saved yet</source>
        <translation>Pas encore enregistrée</translation>
    </message>
    <message>
        <source>The note was put into the trash elsewhere.</source>
        <translation>La note a été mise à la corbeille ailleurs.</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n Notes</source>
        <translation>
            <numerusform>Supprimer %n note</numerusform>
            <numerusform>Supprimer %n notes</numerusform>
        </translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>Supprimer « %1 »</translation>
    </message>
    <message>
        <source>The note was deleted elsewhere. What was not saved yet is in a new note.</source>
        <translation>La note a été supprimée ailleurs. Ce qui n’était pas encore enregistré se trouve dans une nouvelle note.</translation>
    </message>
    <message>
        <source>The note was deleted elsewhere.</source>
        <translation>La note a été supprimée ailleurs.</translation>
    </message>
</context>
<context>
    <name>QBNoteEditorViewController</name>
    <message>
        <source>Attach Files</source>
        <translation>Joindre des fichiers</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Gras</translation>
    </message>
    <message>
        <source>Italic</source>
        <translation>Italique</translation>
    </message>
    <message>
        <source>Underline</source>
        <translation>Souligné</translation>
    </message>
    <message>
        <source>Strikethrough</source>
        <translation>Barré</translation>
    </message>
    <message>
        <source>Highlight</source>
        <translation>Surligné</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>Bulleted List</source>
        <translation>Liste à puces</translation>
    </message>
    <message>
        <source>Numbered List</source>
        <translation>Liste numérotée</translation>
    </message>
    <message>
        <source>To-do</source>
        <translation>Tâche</translation>
    </message>
    <message>
        <source>Quote</source>
        <translation>Citation</translation>
    </message>
    <message>
        <source>Code Block</source>
        <translation>Bloc de code</translation>
    </message>
    <message>
        <source>Line Separator</source>
        <translation>Ligne de séparation</translation>
    </message>
    <message>
        <source>Heading %1</source>
        <translation>Titre %1</translation>
    </message>
    <message>
        <source>No Heading</source>
        <translation>Pas de titre</translation>
    </message>
    <message>
        <source>Complete To-do</source>
        <translation>Terminer la tâche</translation>
    </message>
    <message>
        <source>Indent</source>
        <translation>Augmenter le retrait</translation>
    </message>
    <message>
        <source>Outdent</source>
        <translation>Diminuer le retrait</translation>
    </message>
    <message>
        <source>Move Line Up</source>
        <translation>Monter la ligne</translation>
    </message>
    <message>
        <source>Move Line Down</source>
        <translation>Descendre la ligne</translation>
    </message>
    <message>
        <source>Fold Completed To-dos</source>
        <translation>Replier les tâches terminées</translation>
    </message>
    <message>
        <source>Unfold Completed To-dos</source>
        <translation>Déplier les tâches terminées</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>Lien</translation>
    </message>
    <message>
        <source>Link to Note</source>
        <translation>Lien vers une note</translation>
    </message>
    <message>
        <source>Attach Files…</source>
        <translation>Joindre des fichiers…</translation>
    </message>
    <message>
        <source>Paste as Plain Text</source>
        <translation>Coller en texte brut</translation>
    </message>
    <message>
        <source>Complete Tag or Link</source>
        <translation>Compléter l’étiquette ou le lien</translation>
    </message>
    <message>
        <source>Find in Note…</source>
        <translation>Rechercher dans la note…</translation>
    </message>
    <message>
        <source>Find and Replace…</source>
        <translation>Rechercher et remplacer…</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Rechercher le suivant</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Rechercher le précédent</translation>
    </message>
    <message>
        <source>Typewriter Scrolling</source>
        <translation>Défilement machine à écrire</translation>
    </message>
    <message>
        <source>Focus on Paragraph</source>
        <translation>Focus sur le paragraphe</translation>
    </message>
    <message>
        <source>Format Bar</source>
        <translation>Barre de mise en forme</translation>
    </message>
    <message>
        <source>Note Information</source>
        <translation>Informations sur la note</translation>
    </message>
    <message>
        <source>Heading</source>
        <translation>Titre</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>Paste as Code Block</source>
        <translation>Coller comme bloc de code</translation>
    </message>
    <message>
        <source>Copy as Text</source>
        <translation>Copier en texte</translation>
    </message>
    <message>
        <source>Copy as Text Without Tags</source>
        <translation>Copier en texte sans étiquettes</translation>
    </message>
    <message>
        <source>Note From Selection</source>
        <translation>Note à partir de la sélection</translation>
    </message>
    <message>
        <source>Open Link</source>
        <translation>Ouvrir le lien</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Zoom avant</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Zoom arrière</translation>
    </message>
    <message>
        <source>Actual Size</source>
        <translation>Taille réelle</translation>
    </message>
    <message>
        <source>Wider Lines</source>
        <translation>Lignes plus larges</translation>
    </message>
    <message>
        <source>Narrower Lines</source>
        <translation>Lignes plus étroites</translation>
    </message>
    <message>
        <source>Copy As</source>
        <translation>Copier en tant que</translation>
    </message>
    <message>
        <source>Paste As</source>
        <translation>Coller en tant que</translation>
    </message>
    <message>
        <source>Show Notes with #%1</source>
        <translation>Afficher les notes avec #%1</translation>
    </message>
    <message>
        <source>Open Note</source>
        <translation>Ouvrir la note</translation>
    </message>
    <message>
        <source>Copy Link</source>
        <translation>Copier le lien</translation>
    </message>
    <message>
        <source>Edit Link</source>
        <translation>Modifier le lien</translation>
    </message>
    <message>
        <source>Unfold</source>
        <translation>Déplier</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>Save As…</source>
        <translation>Enregistrer sous…</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>Afficher dans le dossier</translation>
    </message>
    <message>
        <source>Save Attachment</source>
        <translation>Enregistrer la pièce jointe</translation>
    </message>
    <message>
        <source>Keyboard to Next Part</source>
        <translation>Clavier sur la partie suivante</translation>
    </message>
    <message>
        <source>Keyboard to Previous Part</source>
        <translation>Clavier sur la partie précédente</translation>
    </message>
</context>
<context>
    <name>QBNoteTableCellTextRenderer</name>
    <message>
        <source>A wonderful new note</source>
        <translation>Une merveilleuse nouvelle note</translation>
    </message>
    <message>
        <source>Keep calm and write something</source>
        <translation>Restez calme et écrivez quelque chose</translation>
    </message>
    <message>
        <source>Conflicted</source>
        <translation>En conflit</translation>
    </message>
</context>
<context>
    <name>QBNoteTextView</name>
    <message>
        <source>Undo</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Rétablir</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Couper</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Coller</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Tout sélectionner</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Note</translation>
    </message>
</context>
<context>
    <name>QBNotesTableViewController</name>
    <message>
        <source>Pin notes</source>
        <translation>Épingler des notes</translation>
    </message>
    <message>
        <source>Unpin notes</source>
        <translation>Désépingler des notes</translation>
    </message>
    <message>
        <source>Archive notes</source>
        <translation>Archiver des notes</translation>
    </message>
    <message>
        <source>Unarchive notes</source>
        <translation>Désarchiver des notes</translation>
    </message>
    <message>
        <source>Restore notes</source>
        <translation>Restaurer des notes</translation>
    </message>
    <message>
        <source>Delete notes</source>
        <translation>Supprimer des notes</translation>
    </message>
    <message>
        <source>Are you sure you want to permanently delete the selected notes?</source>
        <translation>Voulez-vous vraiment supprimer définitivement les notes sélectionnées&#x202f;?</translation>
    </message>
    <message>
        <source>Do not show this warning again.</source>
        <translation>Ne plus afficher cet avertissement.</translation>
    </message>
    <message>
        <source>Duplicate notes</source>
        <translation>Dupliquer des notes</translation>
    </message>
    <message>
        <source>Merge notes</source>
        <translation>Fusionner des notes</translation>
    </message>
    <message>
        <source>Unmerge notes</source>
        <translation>Séparer des notes</translation>
    </message>
    <message>
        <source>Remove tag</source>
        <translation>Retirer l’étiquette</translation>
    </message>
    <message>
        <source>Re-add tag</source>
        <translation>Remettre l’étiquette</translation>
    </message>
    <message>
        <source>Are you sure you want to permanently delete all notes in the trash?</source>
        <translation>Voulez-vous vraiment supprimer définitivement toutes les notes de la corbeille ?</translation>
    </message>
</context>
<context>
    <name>ShortTimeAgo</name>
    <message>
        <source>%1y</source>
        <translation>%1&#xa0;an</translation>
    </message>
    <message>
        <source>%1M</source>
        <translation>%1&#xa0;mois</translation>
    </message>
    <message>
        <source>%1w</source>
        <translation>%1&#xa0;sem.</translation>
    </message>
    <message>
        <source>%1d</source>
        <translation>%1&#xa0;j</translation>
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
        <translation>à l’instant</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Notes</source>
        <translation>Notes</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Archives</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>Corbeille</translation>
    </message>
    <message>
        <source>Untagged</source>
        <translation>Sans étiquette</translation>
    </message>
    <message>
        <source>Todo</source>
        <translation>À faire</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Aujourd’hui</translation>
    </message>
    <message>
        <source>Sample Notes</source>
        <translation>Exemples de notes</translation>
    </message>
</context>
<context>
    <name>WindowFrontEnd</name>
    <message>
        <source>Another Quib has them open, and cannot be reached from here. Go on in its window, or quit it and start Quib again.</source>
        <translation>Un autre Quib les a ouvertes et ne peut être joint d’ici. Continuez dans sa fenêtre, ou quittez-le et relancez Quib.</translation>
    </message>
    <message>
        <source>Quib keeps its notes in this folder, and cannot write to it (%1). Make that possible, and start Quib again.</source>
        <translation>Quib conserve les notes dans ce dossier et ne peut pas y écrire (%1). Rendez-le accessible en écriture, puis relancez Quib.</translation>
    </message>
    <message>
        <source>Your notes are in use</source>
        <translation>Vos notes sont en cours d’utilisation</translation>
    </message>
    <message>
        <source>Your notes cannot be written to</source>
        <translation>Impossible d’écrire dans vos notes</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>Afficher le dossier</translation>
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
        <translation>Des notes en texte brut, conservées sur cet ordinateur.</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Copy the versions</source>
        <translation>Copier les versions</translation>
    </message>
    <message>
        <source>For a bug report</source>
        <translation>Pour signaler un problème</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>Bibliothèques</translation>
    </message>
    <message>
        <source>Their licences in full come with their packages, in %1.</source>
        <translation>Leurs licences complètes accompagnent leurs paquets, dans %1.</translation>
    </message>
</context>
<context>
    <name>quib::AccessibleNoteTextView</name>
    <message>
        <source>Checks or unchecks the item at the caret</source>
        <translation>Coche ou décoche l’élément au curseur</translation>
    </message>
</context>
<context>
    <name>quib::AutomationPage</name>
    <message>
        <source>Actions</source>
        <translation>Actions</translation>
    </message>
    <message>
        <source>Scripts, launchers and other programs drive Quib by addresses. They can make notes, add to them, open them and search:</source>
        <translation>Scripts, lanceurs et autres programmes pilotent Quib par des adresses. Ils peuvent créer des notes, les compléter, les ouvrir et chercher&#xa0;:</translation>
    </message>
    <message>
        <source>Example of an address</source>
        <translation>Exemple d’adresse</translation>
    </message>
    <message>
        <source>Read More</source>
        <translation>En savoir plus</translation>
    </message>
    <message>
        <source>All actions with examples</source>
        <translation>Toutes les actions avec des exemples</translation>
    </message>
    <message>
        <source>Token</source>
        <translation>Jeton</translation>
    </message>
    <message>
        <source>An action that lists your notes or tags answers only to who names this token. It lies in a file that you alone can read, and never leaves this computer. Give it to scripts that you trust.</source>
        <translation>Une action qui énumère vos notes ou vos étiquettes ne répond qu’à qui donne ce jeton. Il se trouve dans un fichier que vous seul pouvez lire et ne quitte jamais cet ordinateur. Donnez-le aux scripts auxquels vous faites confiance.</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Afficher</translation>
    </message>
    <message>
        <source>Show the token</source>
        <translation>Afficher le jeton</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Copy the token</source>
        <translation>Copier le jeton</translation>
    </message>
    <message>
        <source>Renew…</source>
        <translation>Renouveler…</translation>
    </message>
    <message>
        <source>Renew the token?</source>
        <translation>Renouveler le jeton&#x202f;?</translation>
    </message>
    <message>
        <source>Renew</source>
        <translation>Renouveler</translation>
    </message>
    <message>
        <source>This is the new token.</source>
        <translation>Voici le nouveau jeton.</translation>
    </message>
    <message>
        <source>Renew the token</source>
        <translation>Renouveler le jeton</translation>
    </message>
    <message>
        <source>Scripts that know the old one are shut out.</source>
        <translation>Les scripts qui connaissent l’ancien n’ont plus accès.</translation>
    </message>
    <message>
        <source>Make a Token</source>
        <translation>Créer un jeton</translation>
    </message>
    <message>
        <source>There is no token yet</source>
        <translation>Il n’y a pas encore de jeton</translation>
    </message>
    <message>
        <source>Until there is one, no script reads a list of notes.</source>
        <translation>Tant qu’il n’y en a pas, aucun script ne lit de liste de notes.</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>The token is on the clipboard.</source>
        <translation>Le jeton est dans le presse-papiers.</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Retour</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Masquer</translation>
    </message>
    <message>
        <source>Hide the token</source>
        <translation>Masquer le jeton</translation>
    </message>
</context>
<context>
    <name>quib::CompletionPopup</name>
    <message>
        <source>Completions</source>
        <translation>Propositions</translation>
    </message>
</context>
<context>
    <name>quib::DesktopIntegration</name>
    <message>
        <source>The desktop has Quib’s shortcuts now; its keyboard settings give them keys.</source>
        <translation>Le bureau connaît maintenant les raccourcis de Quib&#x202f;; leurs touches se choisissent dans ses réglages du clavier.</translation>
    </message>
    <message>
        <source>These keys reach Quib from everywhere: %1</source>
        <translation>Ces touches atteignent Quib depuis tous les programmes&#xa0;: %1</translation>
    </message>
    <message>
        <source>The desktop has given Quib no shortcuts.</source>
        <translation>Le bureau n’a accordé aucun raccourci à Quib.</translation>
    </message>
    <message>
        <source>This desktop lets no program take keys everywhere. Its keyboard settings can give a key to the command “%1”.</source>
        <translation>Ce bureau ne laisse aucun programme recevoir des touches partout. Ses réglages du clavier peuvent donner une touche à la commande «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>Copy Command</source>
        <translation>Copier la commande</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>Note rapide</translation>
    </message>
    <message>
        <source>New Note</source>
        <translation>Nouvelle note</translation>
    </message>
    <message>
        <source>Search Notes</source>
        <translation>Rechercher dans les notes</translation>
    </message>
    <message>
        <source>Show Quib</source>
        <translation>Afficher Quib</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Write a quick note</source>
        <translation>Écrire une note rapide</translation>
    </message>
    <message>
        <source>Search the notes</source>
        <translation>Rechercher dans les notes</translation>
    </message>
</context>
<context>
    <name>quib::DetachedWindow</name>
    <message>
        <source>Close Window</source>
        <translation>Fermer la fenêtre</translation>
    </message>
    <message>
        <source>Untitled note</source>
        <translation>Note sans titre</translation>
    </message>
    <message>
        <source>Keep Above Others</source>
        <translation>Garder au-dessus des autres</translation>
    </message>
    <message>
        <source>All Commands…</source>
        <translation>Toutes les commandes…</translation>
    </message>
    <message>
        <source>Find a command</source>
        <translation>Trouver une commande</translation>
    </message>
</context>
<context>
    <name>quib::EditorPage</name>
    <message>
        <source>Text</source>
        <translation>Texte</translation>
    </message>
    <message>
        <source>Sample of a note</source>
        <translation>Exemple de note</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Police</translation>
    </message>
    <message>
        <source>Where this computer lacks a font, one of the same kind stands in.</source>
        <translation>Si une police manque sur cet ordinateur, une police semblable la remplace.</translation>
    </message>
    <message>
        <source> pt</source>
        <comment>points, behind a font size</comment>
        <translation>&#xa0;pt</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>Taille</translation>
    </message>
    <message>
        <source>Line height</source>
        <translation>Hauteur de ligne</translation>
    </message>
    <message>
        <source>× %1</source>
        <comment>a multiple</comment>
        <translation>×&#xa0;%1</translation>
    </message>
    <message>
        <source>Line width</source>
        <translation>Largeur de ligne</translation>
    </message>
    <message>
        <source>%1 em</source>
        <comment>width of a line</comment>
        <translation>%1&#xa0;em</translation>
    </message>
    <message>
        <source>Space between paragraphs</source>
        <translation>Espace entre les paragraphes</translation>
    </message>
    <message>
        <source>%1 em</source>
        <comment>space</comment>
        <translation>%1&#xa0;em</translation>
    </message>
    <message>
        <source>Use the Font’s Own</source>
        <translation>Utiliser ceux de la police</translation>
    </message>
    <message>
        <source>Sizes and spaces</source>
        <translation>Tailles et espaces</translation>
    </message>
    <message>
        <source>Every font comes with sizes that suit it.</source>
        <translation>Chaque police a des tailles qui lui conviennent.</translation>
    </message>
    <message>
        <source>Markup</source>
        <translation>Balisage</translation>
    </message>
    <message>
        <source>Notes are written in</source>
        <translation>Les notes sont écrites en</translation>
    </message>
    <message>
        <source>Your notes stay as they are written: this decides how their signs are read.</source>
        <translation>Vos notes restent telles qu’elles sont écrites&#xa0;: ce choix décide de la lecture de leurs signes.</translation>
    </message>
    <message>
        <source>Quib’s markup</source>
        <translation>Balisage de Quib</translation>
    </message>
    <message>
        <source>Markdown</source>
        <translation>Markdown</translation>
    </message>
    <message>
        <source>bold</source>
        <translation>gras</translation>
    </message>
    <message>
        <source>italic</source>
        <translation>italique</translation>
    </message>
    <message>
        <source>underlined</source>
        <translation>souligné</translation>
    </message>
    <message>
        <source>struck</source>
        <translation>barré</translation>
    </message>
    <message>
        <source>to do</source>
        <translation>à faire</translation>
    </message>
    <message>
        <source>done</source>
        <translation>fait</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>Écriture</translation>
    </message>
    <message>
        <source>Complete tags, links and languages</source>
        <translation>Compléter les étiquettes, les liens et les langages</translation>
    </message>
    <message>
        <source>A list of what fits appears while you type.</source>
        <translation>Une liste de propositions apparaît pendant la saisie.</translation>
    </message>
    <message>
        <source>Fold completed to-dos</source>
        <translation>Replier les tâches terminées</translation>
    </message>
    <message>
        <source>What is ticked off takes one short line until you open it.</source>
        <translation>Ce qui est coché n’occupe qu’une courte ligne jusqu’à ce que vous l’ouvriez.</translation>
    </message>
    <message>
        <source>Typewriter scrolling</source>
        <translation>Défilement machine à écrire</translation>
    </message>
    <message>
        <source>The line you write in stays at the same height.</source>
        <translation>La ligne où vous écrivez reste à la même hauteur.</translation>
    </message>
    <message>
        <source>Focus on the paragraph</source>
        <translation>Focus sur le paragraphe</translation>
    </message>
    <message>
        <source>All but the paragraph you write in stands back.</source>
        <translation>Tout s’estompe sauf le paragraphe où vous écrivez.</translation>
    </message>
    <message>
        <source>Show the format bar</source>
        <translation>Afficher la barre de mise en forme</translation>
    </message>
    <message>
        <source>Check the spelling</source>
        <translation>Vérifier l’orthographe</translation>
    </message>
    <message>
        <source>Misspelt words get a wavy line, in the languages of your dictionaries.</source>
        <translation>Les mots mal orthographiés reçoivent une ligne ondulée, dans les langues de vos dictionnaires.</translation>
    </message>
    <message>
        <source>There is no dictionary on this computer. Packages of dictionaries are named %1.</source>
        <translation>Il n’y a pas de dictionnaire sur cet ordinateur. Les paquets de dictionnaires s’appellent %1.</translation>
    </message>
    <message>
        <source>Languages of the spelling</source>
        <translation>Langues de l’orthographe</translation>
    </message>
    <message>
        <source>Which of them a paragraph is in is told by its words.</source>
        <translation>La langue d’un paragraphe se reconnaît à ses mots.</translation>
    </message>
    <message>
        <source>As the Desktop</source>
        <translation>Comme le bureau</translation>
    </message>
    <message numerus="yes">
        <source>%n languages</source>
        <translation>
            <numerusform>%n langue</numerusform>
            <numerusform>%n langues</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::EditorPane</name>
    <message>
        <source>Note</source>
        <translation>Note</translation>
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
        <translation>Rechercher dans la note</translation>
    </message>
    <message>
        <source>Find in note</source>
        <translation>Rechercher dans la note</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Match Case</source>
        <translation>Respecter la casse</translation>
    </message>
    <message>
        <source>Whole Words</source>
        <translation>Mots entiers</translation>
    </message>
    <message>
        <source>Regular Expression</source>
        <translation>Expression rationnelle</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>Rechercher le précédent</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>Rechercher le suivant</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Replace with</source>
        <translation>Remplacer par</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Remplacer</translation>
    </message>
    <message>
        <source>Replace All</source>
        <translation>Tout remplacer</translation>
    </message>
    <message>
        <source>Not a valid pattern</source>
        <translation>Motif incorrect</translation>
    </message>
    <message>
        <source>Too much to replace</source>
        <translation>Trop de texte à remplacer</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Introuvable</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
    <message numerus="yes">
        <source>%n replaced</source>
        <translation>
            <numerusform>%n remplacement</numerusform>
            <numerusform>%n remplacements</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 of more than %2</source>
        <translation>%1 sur plus de %2</translation>
    </message>
</context>
<context>
    <name>quib::FormatBar</name>
    <message>
        <source>Format</source>
        <translation>Mise en forme</translation>
    </message>
    <message>
        <source>More Formats</source>
        <translation>Plus de formats</translation>
    </message>
</context>
<context>
    <name>quib::GeneralPage</name>
    <message>
        <source>Lists</source>
        <translation>Listes</translation>
    </message>
    <message>
        <source>Sort notes by</source>
        <translation>Trier les notes par</translation>
    </message>
    <message>
        <source>Date Changed</source>
        <translation>Date de modification</translation>
    </message>
    <message>
        <source>Date Created</source>
        <translation>Date de création</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titre</translation>
    </message>
    <message>
        <source>Order of notes</source>
        <translation>Ordre des notes</translation>
    </message>
    <message>
        <source>Pinned notes stand above all others.</source>
        <translation>Les notes épinglées restent au-dessus des autres.</translation>
    </message>
    <message>
        <source>Descending</source>
        <translation>Décroissant</translation>
    </message>
    <message>
        <source>Ascending</source>
        <translation>Croissant</translation>
    </message>
    <message>
        <source>Sort tags by</source>
        <translation>Trier les étiquettes par</translation>
    </message>
    <message>
        <source>Number of Notes</source>
        <translation>Nombre de notes</translation>
    </message>
    <message>
        <source>Order of tags</source>
        <translation>Ordre des étiquettes</translation>
    </message>
    <message>
        <source>Symbols for tags</source>
        <translation>Symboles pour les étiquettes</translation>
    </message>
    <message>
        <source>Tags in the sidebar get a symbol that fits their name.</source>
        <translation>Les étiquettes de la barre latérale reçoivent un symbole assorti à leur nom.</translation>
    </message>
    <message>
        <source>Links</source>
        <translation>Liens</translation>
    </message>
    <message>
        <source>Look up the titles of copied links</source>
        <translation>Chercher le titre des liens copiés</translation>
    </message>
    <message>
        <source>A web address on the clipboard gets the title of its page before you paste it. Quib asks that page for it.</source>
        <translation>Une adresse web dans le presse-papiers reçoit le titre de sa page avant que vous la colliez. Quib le demande à cette page.</translation>
    </message>
    <message>
        <source>On this computer</source>
        <translation>Sur cet ordinateur</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>Afficher le dossier</translation>
    </message>
    <message>
        <source>Show the folder of the notes</source>
        <translation>Afficher le dossier des notes</translation>
    </message>
    <message>
        <source>Notes and attachments</source>
        <translation>Notes et pièces jointes</translation>
    </message>
    <message>
        <source>Write a log file</source>
        <translation>Écrire un journal</translation>
    </message>
    <message>
        <source>For finding out what went wrong. The log has no text of your notes.</source>
        <translation>Pour comprendre ce qui n’a pas marché. Le journal ne contient aucun texte de vos notes.</translation>
    </message>
    <message>
        <source>Show the folder of the logs</source>
        <translation>Afficher le dossier des journaux</translation>
    </message>
    <message>
        <source>Logs</source>
        <translation>Journaux</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>Repartir de zéro</translation>
    </message>
    <message>
        <source>Reset…</source>
        <translation>Réinitialiser…</translation>
    </message>
    <message>
        <source>Reset all preferences?</source>
        <translation>Réinitialiser toutes les préférences&#x202f;?</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Réinitialiser</translation>
    </message>
    <message>
        <source>Reset all preferences</source>
        <translation>Réinitialiser toutes les préférences</translation>
    </message>
    <message>
        <source>Themes, fonts, lists and writing go back to how they were. No note changes.</source>
        <translation>Thèmes, polices, listes et écriture reviennent à leur état initial. Aucune note ne change.</translation>
    </message>
</context>
<context>
    <name>quib::InformationPanel</name>
    <message>
        <source>Note Information</source>
        <translation>Informations sur la note</translation>
    </message>
    <message>
        <source>Words</source>
        <translation>Mots</translation>
    </message>
    <message>
        <source>Characters</source>
        <translation>Caractères</translation>
    </message>
    <message>
        <source>Paragraphs</source>
        <translation>Paragraphes</translation>
    </message>
    <message>
        <source>Reading time</source>
        <translation>Temps de lecture</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Modifiée</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Créée</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Sommaire</translation>
    </message>
    <message>
        <source>Notes That Link Here</source>
        <translation>Notes qui renvoient ici</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1&#xa0;min</translation>
    </message>
    <message>
        <source>Headings of the note stand here.</source>
        <translation>Les titres de la note apparaissent ici.</translation>
    </message>
    <message>
        <source>No note links here yet.</source>
        <translation>Aucune note ne renvoie encore ici.</translation>
    </message>
    <message>
        <source>%1, heading %2</source>
        <translation>%1, titre %2</translation>
    </message>
</context>
<context>
    <name>quib::InlineQuestion</name>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>quib::MessageBar</name>
    <message>
        <source>Close the message</source>
        <translation>Fermer le message</translation>
    </message>
</context>
<context>
    <name>quib::NoteListModel</name>
    <message>
        <source>Untitled note</source>
        <translation>Note sans titre</translation>
    </message>
    <message>
        <source>pinned</source>
        <translation>épinglée</translation>
    </message>
    <message>
        <source>in conflict with another version</source>
        <translation>en conflit avec une autre version</translation>
    </message>
    <message>
        <source>%1 of %2 done</source>
        <translation>%1 sur %2 terminées</translation>
    </message>
</context>
<context>
    <name>quib::NoteListView</name>
    <message>
        <source>Notes</source>
        <translation>Notes</translation>
    </message>
    <message numerus="yes">
        <source>%n notes</source>
        <translation>
            <numerusform>%n note</numerusform>
            <numerusform>%n notes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::NoteTextViewSpelling</name>
    <message>
        <source>Looking for Words…</source>
        <translation>Recherche de mots…</translation>
    </message>
    <message>
        <source>Add “%1” to the Dictionary</source>
        <translation>Ajouter «&#xa0;%1&#xa0;» au dictionnaire</translation>
    </message>
    <message>
        <source>Ignore “%1”</source>
        <translation>Ignorer «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>No Other Words Found</source>
        <translation>Aucun autre mot trouvé</translation>
    </message>
</context>
<context>
    <name>quib::OverlayScrollBar</name>
    <message>
        <source>Scroll bar</source>
        <translation>Barre de défilement</translation>
    </message>
</context>
<context>
    <name>quib::PreferencesWindow</name>
    <message>
        <source>Preferences</source>
        <translation>Préférences</translation>
    </message>
    <message>
        <source>Pages of the preferences</source>
        <translation>Pages des préférences</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Général</translation>
    </message>
    <message>
        <source>Editor</source>
        <translation>Éditeur</translation>
    </message>
    <message>
        <source>Themes</source>
        <translation>Thèmes</translation>
    </message>
    <message>
        <source>Automation</source>
        <translation>Automatisation</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Raccourcis</translation>
    </message>
    <message>
        <source>About</source>
        <translation>À propos</translation>
    </message>
</context>
<context>
    <name>quib::QuickNoteWindow</name>
    <message>
        <source>Saved as you type. Escape closes.</source>
        <translation>Enregistrée à mesure que vous écrivez. Échap ferme.</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>Note rapide</translation>
    </message>
    <message>
        <source>Open in Quib</source>
        <translation>Ouvrir dans Quib</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>Fermer la fenêtre</translation>
    </message>
    <message>
        <source>Go on in the main window (Ctrl+O)</source>
        <translation>Continuer dans la fenêtre principale (Ctrl+O)</translation>
    </message>
</context>
<context>
    <name>quib::SavingMessage</name>
    <message>
        <source>The file of your notes is damaged, and parts of it cannot be read. Nothing is written to it any more. Quit Quib, and run “quibctl check” in a terminal to learn what is whole.</source>
        <translation>Le fichier de vos notes est endommagé et en partie illisible. Plus rien n’y est écrit. Quittez Quib et exécutez « quibctl check » dans un terminal pour savoir ce qui est intact.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: the disk is full. Make some room on it; Quib keeps trying.</source>
        <translation>Impossible d’enregistrer vos notes : le disque est plein. Libérez de la place ; Quib continue d’essayer.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: their folder cannot be written to. Quib keeps trying.</source>
        <translation>Impossible d’enregistrer vos notes : leur dossier n’est pas accessible en écriture. Quib continue d’essayer.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: another program does not let go of them. Quib keeps trying.</source>
        <translation>Impossible d’enregistrer vos notes : un autre programme ne les libère pas. Quib continue d’essayer.</translation>
    </message>
    <message>
        <source>Your notes cannot be saved. Quib keeps trying. The reason: %1</source>
        <translation>Impossible d’enregistrer vos notes. Quib continue d’essayer. La raison : %1</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>%1 What you wrote last may be lost if you quit now.</source>
        <comment>%1 is one or more sentences</comment>
        <translation>%1 Si vous quittez maintenant, ce que vous avez écrit en dernier peut être perdu.</translation>
    </message>
    <message>
        <source>Quit Without Saving</source>
        <translation>Quitter sans enregistrer</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>quib::SearchField</name>
    <message>
        <source>notes with something left to do</source>
        <translation>notes où il reste à faire</translation>
    </message>
    <message>
        <source>notes where everything is done</source>
        <translation>notes où tout est fait</translation>
    </message>
    <message>
        <source>notes with to-dos</source>
        <translation>notes avec des tâches</translation>
    </message>
    <message>
        <source>changed today</source>
        <translation>modifiées aujourd’hui</translation>
    </message>
    <message>
        <source>changed yesterday</source>
        <translation>modifiées hier</translation>
    </message>
    <message>
        <source>changed in the last seven days</source>
        <translation>modifiées ces sept derniers jours</translation>
    </message>
    <message>
        <source>changed on a day: @date(2024-12-31)</source>
        <translation>modifiées un jour donné&#xa0;: @date(2024-12-31)</translation>
    </message>
    <message>
        <source>created on a day: @cdate(2024-12-31)</source>
        <translation>créées un jour donné&#xa0;: @cdate(2024-12-31)</translation>
    </message>
    <message>
        <source>notes with pictures</source>
        <translation>notes avec des images</translation>
    </message>
    <message>
        <source>notes with files</source>
        <translation>notes avec des fichiers</translation>
    </message>
    <message>
        <source>notes with pictures or files</source>
        <translation>notes avec des images ou des fichiers</translation>
    </message>
    <message>
        <source>notes with code</source>
        <translation>notes avec du code</translation>
    </message>
    <message>
        <source>notes with tags</source>
        <translation>notes avec des étiquettes</translation>
    </message>
    <message>
        <source>notes without tags</source>
        <translation>notes sans étiquette</translation>
    </message>
    <message>
        <source>Search notes</source>
        <translation>Rechercher dans les notes</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Words, &quot;phrases&quot; and #tags; a minus excludes; @ offers more</source>
        <translation>Mots, &quot;expressions&quot; et #étiquettes&#x202f;; un moins exclut&#x202f;; @ propose davantage</translation>
    </message>
    <message>
        <source>End the search</source>
        <translation>Terminer la recherche</translation>
    </message>
    <message>
        <source>word</source>
        <translation>mot</translation>
    </message>
    <message>
        <source>notes with the word, or with a word that has it in it</source>
        <translation>notes avec le mot, ou un mot qui le contient</translation>
    </message>
    <message>
        <source>&quot;two words&quot;</source>
        <translation>&quot;deux mots&quot;</translation>
    </message>
    <message>
        <source>notes with just these words, one behind the other</source>
        <translation>notes avec exactement ces mots, l’un après l’autre</translation>
    </message>
    <message>
        <source>-word</source>
        <translation>-mot</translation>
    </message>
    <message>
        <source>notes without the word</source>
        <translation>notes sans le mot</translation>
    </message>
    <message>
        <source>#tag</source>
        <translation>#étiquette</translation>
    </message>
    <message>
        <source>notes with the tag in their text</source>
        <translation>notes avec l’étiquette dans leur texte</translation>
    </message>
</context>
<context>
    <name>quib::ShortcutsPage</name>
    <message>
        <source>or</source>
        <comment>between two shortcuts</comment>
        <translation>ou</translation>
    </message>
    <message>
        <source>No shortcut matches.</source>
        <translation>Aucun raccourci ne correspond.</translation>
    </message>
    <message>
        <source>Search commands and keys</source>
        <translation>Rechercher des commandes et des touches</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Raccourcis clavier</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Commande</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Touches</translation>
    </message>
</context>
<context>
    <name>quib::SidebarModel</name>
    <message>
        <source>Tags</source>
        <translation>Étiquettes</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n note(s)</source>
        <translation>
            <numerusform>%1, %n note</numerusform>
            <numerusform>%1, %n notes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::SidebarView</name>
    <message>
        <source>Lists and tags</source>
        <translation>Listes et étiquettes</translation>
    </message>
</context>
<context>
    <name>quib::SpokenNoteText</name>
    <message>
        <source>checked item</source>
        <translation>élément coché</translation>
    </message>
    <message>
        <source>unchecked item</source>
        <translation>élément non coché</translation>
    </message>
    <message>
        <source>heading %1</source>
        <translation>titre %1</translation>
    </message>
    <message>
        <source>picture %1</source>
        <translation>image %1</translation>
    </message>
    <message>
        <source>file %1</source>
        <translation>fichier %1</translation>
    </message>
    <message>
        <source>separator</source>
        <translation>séparateur</translation>
    </message>
    <message>
        <source>folded text</source>
        <translation>texte replié</translation>
    </message>
    <message>
        <source>link to a note</source>
        <translation>lien vers une note</translation>
    </message>
    <message>
        <source>link</source>
        <translation>lien</translation>
    </message>
</context>
<context>
    <name>quib::SymbolPicker</name>
    <message>
        <source>Symbol of the tag</source>
        <translation>Symbole de l’étiquette</translation>
    </message>
    <message>
        <source>Symbols</source>
        <translation>Symboles</translation>
    </message>
    <message>
        <source>By the Tag’s Name</source>
        <translation>D’après le nom de l’étiquette</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>Étiquette</translation>
    </message>
    <message>
        <source>Animal</source>
        <translation>Animal</translation>
    </message>
    <message>
        <source>Art</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Book</source>
        <translation>Livre</translation>
    </message>
    <message>
        <source>Bug</source>
        <translation>Insecte</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Calendrier</translation>
    </message>
    <message>
        <source>Car</source>
        <translation>Voiture</translation>
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
        <translation>Nourriture</translation>
    </message>
    <message>
        <source>Game</source>
        <translation>Jeu</translation>
    </message>
    <message>
        <source>Gift</source>
        <translation>Cadeau</translation>
    </message>
    <message>
        <source>Health</source>
        <translation>Santé</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Maison</translation>
    </message>
    <message>
        <source>Idea</source>
        <translation>Idée</translation>
    </message>
    <message>
        <source>Journal</source>
        <translation>Journal</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>Lien</translation>
    </message>
    <message>
        <source>Money</source>
        <translation>Argent</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Musique</translation>
    </message>
    <message>
        <source>People</source>
        <translation>Personnes</translation>
    </message>
    <message>
        <source>Photo</source>
        <translation>Photo</translation>
    </message>
    <message>
        <source>Plant</source>
        <translation>Plante</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Projet</translation>
    </message>
    <message>
        <source>School</source>
        <translation>École</translation>
    </message>
    <message>
        <source>Science</source>
        <translation>Science</translation>
    </message>
    <message>
        <source>Shopping</source>
        <translation>Courses</translation>
    </message>
    <message>
        <source>Sport</source>
        <translation>Sport</translation>
    </message>
    <message>
        <source>To-do</source>
        <translation>Tâche</translation>
    </message>
    <message>
        <source>Travel</source>
        <translation>Voyages</translation>
    </message>
    <message>
        <source>Work</source>
        <translation>Travail</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>Écriture</translation>
    </message>
</context>
<context>
    <name>quib::ThemeGallery</name>
    <message>
        <source>Themes</source>
        <translation>Thèmes</translation>
    </message>
</context>
<context>
    <name>quib::ThemeGalleryModel</name>
    <message>
        <source>%1, in use</source>
        <comment>theme</comment>
        <translation>%1, utilisé</translation>
    </message>
    <message>
        <source>%1, in use when the desktop is light</source>
        <comment>theme</comment>
        <translation>%1, utilisé quand le bureau est clair</translation>
    </message>
    <message>
        <source>%1, in use when the desktop is dark</source>
        <comment>theme</comment>
        <translation>%1, utilisé quand le bureau est sombre</translation>
    </message>
</context>
<context>
    <name>quib::ThemePreview</name>
    <message>
        <source>%1Low tide%2 is at nine. Take the %3slow path%4 along the harbour.</source>
        <translation>La %1marée basse%2 est à neuf heures. Prends le %3chemin lent%4 le long du port.</translation>
    </message>
    <message>
        <source>A day by the sea</source>
        <translation>Une journée à la mer</translation>
    </message>
    <message>
        <source>Pack the ::blue:: bag</source>
        <translation>Préparer le sac ::bleu::</translation>
    </message>
    <message>
        <source>Buy bread and [[Cheese]]</source>
        <translation>Acheter du pain et du [[Fromage]]</translation>
    </message>
    <message>
        <source>The sea is never late.</source>
        <translation>La mer n’est jamais en retard.</translation>
    </message>
    <message>
        <source>travel/coast</source>
        <translation>voyages/côte</translation>
    </message>
</context>
<context>
    <name>quib::ThemesPage</name>
    <message>
        <source>Choose the theme for a light desktop</source>
        <translation>Choisir le thème pour un bureau clair</translation>
    </message>
    <message>
        <source>Choose the theme for a dark desktop</source>
        <translation>Choisir le thème pour un bureau sombre</translation>
    </message>
    <message>
        <source>Light desktop: %1</source>
        <translation>Bureau clair&#xa0;: %1</translation>
    </message>
    <message>
        <source>Dark desktop: %1</source>
        <translation>Bureau sombre&#xa0;: %1</translation>
    </message>
    <message>
        <source>Quib follows the desktop, which is dark at the moment.</source>
        <translation>Quib suit le bureau, qui est sombre en ce moment.</translation>
    </message>
    <message>
        <source>Quib follows the desktop, which is light at the moment.</source>
        <translation>Quib suit le bureau, qui est clair en ce moment.</translation>
    </message>
</context>
</TS>
