<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>QBAppDelegate</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>他 %n 件</numerusform>
        </translation>
    </message>
    <message>
        <source>These files cannot be opened</source>
        <translation>これらのファイルは開けません</translation>
    </message>
    <message>
        <source>This version of Quib opens pictures only. Nothing was imported from:
%1</source>
        <translation>このバージョンの Quib で開けるのは画像だけです。次のファイルからは何も取り込まれませんでした:
%1</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>These pictures could not be copied</source>
        <translation>これらの画像をコピーできませんでした</translation>
    </message>
    <message>
        <source>Something went wrong</source>
        <translation>問題が発生しました</translation>
    </message>
    <message>
        <source>Just a moment and Quib will be ready!</source>
        <translation>まもなく Quib の準備ができます。</translation>
    </message>
    <message>
        <source>Quib is currently speeding up your notes and migrating the database to a new version.
We highly suggest not to exit from Quib during the whole process.</source>
        <translation>Quib はノートを高速化し、データベースを新しいバージョンに移行しています。
完了するまで Quib を終了しないことを強くお勧めします。</translation>
    </message>
    <message>
        <source>It was not possible to migrate your database to the new version. Don&apos;t worry your notes are safe, please contact the support team using the &apos;Contact Support&apos; button below and they will help you.</source>
        <translation>データベースを新しいバージョンに移行できませんでした。ノートは無事ですのでご安心ください。下の「サポートに連絡」ボタンからサポートチームにご連絡ください。</translation>
    </message>
    <message>
        <source>Contact Support</source>
        <translation>サポートに連絡</translation>
    </message>
    <message>
        <source>Your notes could not be opened</source>
        <translation>ノートを開けませんでした</translation>
    </message>
    <message>
        <source>The file that holds them is damaged, or is no file of Quib&apos;s. Nothing was changed. Put a copy from a backup in its place, and start Quib again.</source>
        <translation>ノートのファイルが壊れているか、Quib のファイルではありません。何も変更されていません。バックアップのコピーに置き換えてから、Quib を起動し直してください。</translation>
    </message>
    <message>
        <source>Nothing was changed. The reason: %1</source>
        <translation>何も変更されていません。理由: %1</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>フォルダーを表示</translation>
    </message>
</context>
<context>
    <name>QBMainWindowController</name>
    <message>
        <source>New Note</source>
        <translation>新規ノート</translation>
    </message>
    <message>
        <source>New Note in New Window</source>
        <translation>新規ウィンドウで新規ノート</translation>
    </message>
    <message>
        <source>Open Quickly…</source>
        <translation>クイックオープン…</translation>
    </message>
    <message>
        <source>Open in New Window</source>
        <translation>新規ウィンドウで開く</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>複製</translation>
    </message>
    <message>
        <source>Merge</source>
        <translation>結合</translation>
    </message>
    <message>
        <source>Pin to Top</source>
        <translation>先頭に固定</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>アーカイブ</translation>
    </message>
    <message>
        <source>Move to Trash</source>
        <translation>ゴミ箱に移動</translation>
    </message>
    <message>
        <source>Put Back</source>
        <translation>元に戻す</translation>
    </message>
    <message>
        <source>Copy Link to Note</source>
        <translation>ノートへのリンクをコピー</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>ウィンドウを閉じる</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>元に戻す</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>やり直す</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>切り取り</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>貼り付け</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>すべて選択</translation>
    </message>
    <message>
        <source>Search Notes</source>
        <translation>ノートを検索</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <translation>設定…</translation>
    </message>
    <message>
        <source>Rename Tag</source>
        <translation>タグの名前を変更</translation>
    </message>
    <message>
        <source>Delete Tag</source>
        <translation>タグを削除</translation>
    </message>
    <message>
        <source>Remove Tag from Notes</source>
        <translation>ノートからタグを外す</translation>
    </message>
    <message>
        <source>Sidebar, Notes and Editor</source>
        <translation>サイドバー、ノート、エディター</translation>
    </message>
    <message>
        <source>Notes and Editor</source>
        <translation>ノートとエディター</translation>
    </message>
    <message>
        <source>Editor Only</source>
        <translation>エディターのみ</translation>
    </message>
    <message>
        <source>Show or Hide the Sidebar</source>
        <translation>サイドバーの表示を切り替え</translation>
    </message>
    <message>
        <source>Full Screen</source>
        <translation>全画面表示</translation>
    </message>
    <message>
        <source>Next Note</source>
        <translation>次のノート</translation>
    </message>
    <message>
        <source>Previous Note</source>
        <translation>前のノート</translation>
    </message>
    <message>
        <source>Go to Notes</source>
        <translation>「ノート」に移動</translation>
    </message>
    <message>
        <source>Go to Untagged</source>
        <translation>「タグなし」に移動</translation>
    </message>
    <message>
        <source>Go to Todo</source>
        <translation>「タスク」に移動</translation>
    </message>
    <message>
        <source>Go to Today</source>
        <translation>「今日」に移動</translation>
    </message>
    <message>
        <source>Go to Trash</source>
        <translation>「ゴミ箱」に移動</translation>
    </message>
    <message>
        <source>Keyboard to Sidebar</source>
        <translation>キーボードをサイドバーへ</translation>
    </message>
    <message>
        <source>Keyboard to Notes</source>
        <translation>キーボードをノート一覧へ</translation>
    </message>
    <message>
        <source>Keyboard to Editor</source>
        <translation>キーボードをエディターへ</translation>
    </message>
    <message>
        <source>All Commands…</source>
        <translation>すべてのコマンド…</translation>
    </message>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>キーボードショートカット</translation>
    </message>
    <message>
        <source>About Quib</source>
        <translation>Quib について</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>ファイル(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>編集(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Note</source>
        <translation>ノート(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Tag</source>
        <translation>タグ(&amp;T)</translation>
    </message>
    <message>
        <source>F&amp;ormat</source>
        <translation>書式(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>表示(&amp;V)</translation>
    </message>
    <message>
        <source>Sort Notes</source>
        <translation>ノートの並べ替え</translation>
    </message>
    <message>
        <source>Theme</source>
        <translation>テーマ</translation>
    </message>
    <message>
        <source>&amp;Go</source>
        <translation>移動(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>ヘルプ(&amp;H)</translation>
    </message>
    <message>
        <source>More</source>
        <translation>その他</translation>
    </message>
    <message>
        <source>Commands for this note</source>
        <translation>このノートのコマンド</translation>
    </message>
    <message>
        <source>Date Changed</source>
        <translation>更新日</translation>
    </message>
    <message>
        <source>Date Created</source>
        <translation>作成日</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>タイトル</translation>
    </message>
    <message>
        <source>Ascending</source>
        <translation>昇順</translation>
    </message>
    <message>
        <source>Descending</source>
        <translation>降順</translation>
    </message>
    <message>
        <source>Empty Trash…</source>
        <translation>ゴミ箱を空にする…</translation>
    </message>
    <message>
        <source>The tag #%1 is #%2 now.</source>
        <translation>タグ #%1 の名前を #%2 に変更しました。</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message numerus="yes">
        <source>%n link(s) copied.</source>
        <translation>
            <numerusform>%n 個のリンクをコピーしました。</numerusform>
        </translation>
    </message>
    <message>
        <source>Untitled note</source>
        <translation>無題のノート</translation>
    </message>
    <message>
        <source>Open a note by its title</source>
        <translation>タイトルからノートを開く</translation>
    </message>
    <message>
        <source>New note “%1”</source>
        <translation>新規ノート「%1」</translation>
    </message>
    <message>
        <source>Find a command</source>
        <translation>コマンドを検索</translation>
    </message>
    <message>
        <source>Theme: %1</source>
        <translation>テーマ: %1</translation>
    </message>
    <message>
        <source>current</source>
        <translation>現在</translation>
    </message>
    <message>
        <source>Quib</source>
        <translation>Quib</translation>
    </message>
    <message>
        <source>“%1” could not be taken into the note.</source>
        <translation>「%1」をノートに取り込めませんでした。</translation>
    </message>
    <message>
        <source>No note matches “%1”.</source>
        <translation>「%1」に一致するノートはありません。</translation>
    </message>
    <message>
        <source>The trash is empty.</source>
        <translation>ゴミ箱は空です。</translation>
    </message>
    <message>
        <source>No notes here yet.</source>
        <translation>ノートはまだありません。</translation>
    </message>
    <message numerus="yes">
        <source>%n notes selected</source>
        <translation>
            <numerusform>%n 件のノートを選択中</numerusform>
        </translation>
    </message>
    <message>
        <source>Drag them onto a tag, or choose a command from their menu.</source>
        <translation>タグにドラッグするか、メニューからコマンドを選んでください。</translation>
    </message>
    <message>
        <source>Write your first note</source>
        <translation>最初のノートを書きましょう</translation>
    </message>
    <message>
        <source>Give it a title, tag it with a #word, tick things off with a dash at the start of a line. Everything is saved as you type.</source>
        <translation>タイトルを付け、#タグ を付け、行頭のハイフンでやることをチェックできます。入力した内容はすべて自動で保存されます。</translation>
    </message>
    <message>
        <source>No note selected</source>
        <translation>ノートが選択されていません</translation>
    </message>
    <message>
        <source>Choose one from the list, or press Ctrl+O to open it by its title.</source>
        <translation>一覧から選ぶか、Ctrl+O を押してタイトルから開いてください。</translation>
    </message>
    <message>
        <source>Unpin</source>
        <translation>固定を解除</translation>
    </message>
    <message>
        <source>Unarchive</source>
        <translation>アーカイブから戻す</translation>
    </message>
    <message>
        <source>Delete Permanently…</source>
        <translation>完全に削除…</translation>
    </message>
    <message>
        <source>In the trash</source>
        <translation>ゴミ箱内</translation>
    </message>
    <message>
        <source>Archived</source>
        <translation>アーカイブ済み</translation>
    </message>
    <message>
        <source>Edited today, %1</source>
        <translation>今日 %1 に編集</translation>
    </message>
    <message>
        <source>HH:mm</source>
        <comment>time of day</comment>
        <translation>H:mm</translation>
    </message>
    <message>
        <source>Edited %1</source>
        <translation>%1に編集</translation>
    </message>
    <message>
        <source>Undo %1</source>
        <translation>元に戻す: %1</translation>
    </message>
    <message>
        <source>Redo %1</source>
        <translation>やり直す: %1</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>クイックノート</translation>
    </message>
    <message>
        <source>What Can Be Searched For…</source>
        <translation>検索できるもの…</translation>
    </message>
    <message>
        <source>Choose Symbol…</source>
        <translation>アイコンを選択…</translation>
    </message>
    <message>
        <source>Icon in the Tray</source>
        <translation>システムトレイのアイコン</translation>
    </message>
    <message>
        <source>Shortcuts from Everywhere…</source>
        <translation>どこでも使えるショートカット…</translation>
    </message>
    <message>
        <source>What can be searched for</source>
        <translation>検索できるもの</translation>
    </message>
    <message numerus="yes">
        <source>The tag #%1 was taken out of %n note(s).</source>
        <translation>
            <numerusform>タグ #%1 を %n 件のノートから外しました。</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose Symbol</source>
        <translation>アイコンを選択</translation>
    </message>
    <message>
        <source>“%1” could not be written.</source>
        <translation>「%1」に書き込めませんでした。</translation>
    </message>
    <message numerus="yes">
        <source>%n found</source>
        <translation>
            <numerusform>%n 件</numerusform>
        </translation>
    </message>
    <message>
        <source>Print…</source>
        <translation>印刷…</translation>
    </message>
    <message>
        <source>Print Note</source>
        <translation>ノートを印刷</translation>
    </message>
    <message>
        <source>“%1” could not be printed.</source>
        <translation>「%1」を印刷できませんでした。</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>見つかりません</translation>
    </message>
    <message>
        <source>Try fewer words, or look in all notes.</source>
        <translation>単語を減らすか、すべてのノートを検索してください。</translation>
    </message>
    <message>
        <source>These notes could not be read.</source>
        <translation>これらのノートを読み込めませんでした。</translation>
    </message>
    <message>
        <source>Your notes could not be read</source>
        <translation>ノートを読み込めませんでした</translation>
    </message>
    <message>
        <source>Not saved yet</source>
        <translation>まだ保存されていません</translation>
    </message>
    <message>
        <source>The note was put into the trash elsewhere.</source>
        <translation>このノートは別の場所でゴミ箱に入れられました。</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n Notes</source>
        <translation>
            <numerusform>%n件のノートを削除</numerusform>
        </translation>
    </message>
    <message>
        <source>Delete “%1”</source>
        <translation>「%1」を削除</translation>
    </message>
    <message>
        <source>The note was deleted elsewhere. What was not saved yet is in a new note.</source>
        <translation>このノートは別の場所で削除されました。まだ保存されていなかった内容は新しいノートにあります。</translation>
    </message>
    <message>
        <source>The note was deleted elsewhere.</source>
        <translation>このノートは別の場所で削除されました。</translation>
    </message>
</context>
<context>
    <name>QBNoteEditorViewController</name>
    <message>
        <source>Attach Files</source>
        <translation>ファイルを添付</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>太字</translation>
    </message>
    <message>
        <source>Italic</source>
        <translation>斜体</translation>
    </message>
    <message>
        <source>Underline</source>
        <translation>下線</translation>
    </message>
    <message>
        <source>Strikethrough</source>
        <translation>取り消し線</translation>
    </message>
    <message>
        <source>Highlight</source>
        <translation>ハイライト</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>コード</translation>
    </message>
    <message>
        <source>Bulleted List</source>
        <translation>箇条書き</translation>
    </message>
    <message>
        <source>Numbered List</source>
        <translation>番号付きリスト</translation>
    </message>
    <message>
        <source>To-do</source>
        <translation>タスク</translation>
    </message>
    <message>
        <source>Quote</source>
        <translation>引用</translation>
    </message>
    <message>
        <source>Code Block</source>
        <translation>コードブロック</translation>
    </message>
    <message>
        <source>Line Separator</source>
        <translation>区切り線</translation>
    </message>
    <message>
        <source>Heading %1</source>
        <translation>見出し %1</translation>
    </message>
    <message>
        <source>No Heading</source>
        <translation>見出しなし</translation>
    </message>
    <message>
        <source>Complete To-do</source>
        <translation>タスクを完了</translation>
    </message>
    <message>
        <source>Indent</source>
        <translation>インデント</translation>
    </message>
    <message>
        <source>Outdent</source>
        <translation>インデント解除</translation>
    </message>
    <message>
        <source>Move Line Up</source>
        <translation>行を上へ移動</translation>
    </message>
    <message>
        <source>Move Line Down</source>
        <translation>行を下へ移動</translation>
    </message>
    <message>
        <source>Fold Completed To-dos</source>
        <translation>完了したタスクを折りたたむ</translation>
    </message>
    <message>
        <source>Unfold Completed To-dos</source>
        <translation>完了したタスクを展開</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>リンク</translation>
    </message>
    <message>
        <source>Link to Note</source>
        <translation>ノートへのリンク</translation>
    </message>
    <message>
        <source>Attach Files…</source>
        <translation>ファイルを添付…</translation>
    </message>
    <message>
        <source>Paste as Plain Text</source>
        <translation>プレーンテキストとして貼り付け</translation>
    </message>
    <message>
        <source>Complete Tag or Link</source>
        <translation>タグまたはリンクを補完</translation>
    </message>
    <message>
        <source>Find in Note…</source>
        <translation>ノート内を検索…</translation>
    </message>
    <message>
        <source>Find and Replace…</source>
        <translation>検索と置換…</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>次を検索</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>前を検索</translation>
    </message>
    <message>
        <source>Typewriter Scrolling</source>
        <translation>タイプライタースクロール</translation>
    </message>
    <message>
        <source>Focus on Paragraph</source>
        <translation>段落にフォーカス</translation>
    </message>
    <message>
        <source>Format Bar</source>
        <translation>書式バー</translation>
    </message>
    <message>
        <source>Note Information</source>
        <translation>ノートの情報</translation>
    </message>
    <message>
        <source>Heading</source>
        <translation>見出し</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>Paste as Code Block</source>
        <translation>コードブロックとして貼り付け</translation>
    </message>
    <message>
        <source>Copy as Text</source>
        <translation>テキストとしてコピー</translation>
    </message>
    <message>
        <source>Copy as Text Without Tags</source>
        <translation>タグなしのテキストとしてコピー</translation>
    </message>
    <message>
        <source>Note From Selection</source>
        <translation>選択範囲からノートを作成</translation>
    </message>
    <message>
        <source>Open Link</source>
        <translation>リンクを開く</translation>
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
        <source>Actual Size</source>
        <translation>実際のサイズ</translation>
    </message>
    <message>
        <source>Wider Lines</source>
        <translation>行を広げる</translation>
    </message>
    <message>
        <source>Narrower Lines</source>
        <translation>行を狭める</translation>
    </message>
    <message>
        <source>Copy As</source>
        <translation>形式を選択してコピー</translation>
    </message>
    <message>
        <source>Paste As</source>
        <translation>形式を選択して貼り付け</translation>
    </message>
    <message>
        <source>Show Notes with #%1</source>
        <translation>#%1 のあるノートを表示</translation>
    </message>
    <message>
        <source>Open Note</source>
        <translation>ノートを開く</translation>
    </message>
    <message>
        <source>Copy Link</source>
        <translation>リンクをコピー</translation>
    </message>
    <message>
        <source>Edit Link</source>
        <translation>リンクを編集</translation>
    </message>
    <message>
        <source>Unfold</source>
        <translation>展開</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>開く</translation>
    </message>
    <message>
        <source>Save As…</source>
        <translation>名前を付けて保存…</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>フォルダーで表示</translation>
    </message>
    <message>
        <source>Save Attachment</source>
        <translation>添付ファイルを保存</translation>
    </message>
    <message>
        <source>Keyboard to Next Part</source>
        <translation>キーボードを次の部分へ</translation>
    </message>
    <message>
        <source>Keyboard to Previous Part</source>
        <translation>キーボードを前の部分へ</translation>
    </message>
</context>
<context>
    <name>QBNoteTableCellTextRenderer</name>
    <message>
        <source>A wonderful new note</source>
        <translation>すてきな新しいノート</translation>
    </message>
    <message>
        <source>Keep calm and write something</source>
        <translation>落ち着いて何か書いてみましょう</translation>
    </message>
    <message>
        <source>Conflicted</source>
        <translation>競合</translation>
    </message>
</context>
<context>
    <name>QBNoteTextView</name>
    <message>
        <source>Undo</source>
        <translation>元に戻す</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>やり直す</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>切り取り</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>貼り付け</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>すべて選択</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>ノート</translation>
    </message>
</context>
<context>
    <name>QBNotesTableViewController</name>
    <message>
        <source>Pin notes</source>
        <translation>ノートの固定</translation>
    </message>
    <message>
        <source>Unpin notes</source>
        <translation>ノートの固定解除</translation>
    </message>
    <message>
        <source>Archive notes</source>
        <translation>ノートのアーカイブ</translation>
    </message>
    <message>
        <source>Unarchive notes</source>
        <translation>アーカイブからの復帰</translation>
    </message>
    <message>
        <source>Restore notes</source>
        <translation>ノートの復元</translation>
    </message>
    <message>
        <source>Delete notes</source>
        <translation>ノートの削除</translation>
    </message>
    <message>
        <source>Are you sure you want to permanently delete the selected notes?</source>
        <translation>選択したノートを完全に削除してもよろしいですか？</translation>
    </message>
    <message>
        <source>Do not show this warning again.</source>
        <translation>今後この警告を表示しない。</translation>
    </message>
    <message>
        <source>Duplicate notes</source>
        <translation>ノートの複製</translation>
    </message>
    <message>
        <source>Merge notes</source>
        <translation>ノートの結合</translation>
    </message>
    <message>
        <source>Unmerge notes</source>
        <translation>ノートの結合解除</translation>
    </message>
    <message>
        <source>Remove tag</source>
        <translation>タグの解除</translation>
    </message>
    <message>
        <source>Re-add tag</source>
        <translation>タグの再追加</translation>
    </message>
    <message>
        <source>Are you sure you want to permanently delete all notes in the trash?</source>
        <translation>ゴミ箱にあるすべてのノートを完全に削除してもよろしいですか？</translation>
    </message>
</context>
<context>
    <name>ShortTimeAgo</name>
    <message>
        <source>%1y</source>
        <translation>%1年</translation>
    </message>
    <message>
        <source>%1M</source>
        <translation>%1か月</translation>
    </message>
    <message>
        <source>%1w</source>
        <translation>%1週</translation>
    </message>
    <message>
        <source>%1d</source>
        <translation>%1日</translation>
    </message>
    <message>
        <source>%1h</source>
        <translation>%1時間</translation>
    </message>
    <message>
        <source>%1m</source>
        <translation>%1分</translation>
    </message>
    <message>
        <source>now</source>
        <translation>今</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Notes</source>
        <translation>ノート</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>アーカイブ</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>ゴミ箱</translation>
    </message>
    <message>
        <source>Untagged</source>
        <translation>タグなし</translation>
    </message>
    <message>
        <source>Todo</source>
        <translation>タスク</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>今日</translation>
    </message>
    <message>
        <source>Sample Notes</source>
        <translation>サンプルノート</translation>
    </message>
</context>
<context>
    <name>WindowFrontEnd</name>
    <message>
        <source>Another Quib has them open, and cannot be reached from here. Go on in its window, or quit it and start Quib again.</source>
        <translation>別の Quib がノートを開いており、ここからは呼び出せません。そのウインドウで続けるか、それを終了してから Quib を起動し直してください。</translation>
    </message>
    <message>
        <source>Quib keeps its notes in this folder, and cannot write to it (%1). Make that possible, and start Quib again.</source>
        <translation>Quib はノートをこのフォルダーに保管しますが、書き込めません（%1）。書き込めるようにしてから、Quib を起動し直してください。</translation>
    </message>
    <message>
        <source>Your notes are in use</source>
        <translation>ノートは使用中です</translation>
    </message>
    <message>
        <source>Your notes cannot be written to</source>
        <translation>ノートに書き込めません</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>フォルダーを表示</translation>
    </message>
</context>
<context>
    <name>quib::AboutPage</name>
    <message>
        <source>Version %1</source>
        <translation>バージョン %1</translation>
    </message>
    <message>
        <source>Notes in plain text, kept on this computer.</source>
        <translation>このコンピューターに保存される、プレーンテキストのノート。</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Copy the versions</source>
        <translation>バージョン情報をコピー</translation>
    </message>
    <message>
        <source>For a bug report</source>
        <translation>不具合の報告用</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>ライブラリ</translation>
    </message>
    <message>
        <source>Their licences in full come with their packages, in %1.</source>
        <translation>ライセンスの全文は各パッケージに付属し、%1 にあります。</translation>
    </message>
</context>
<context>
    <name>quib::AccessibleNoteTextView</name>
    <message>
        <source>Checks or unchecks the item at the caret</source>
        <translation>カーソル位置の項目のチェックを切り替えます</translation>
    </message>
</context>
<context>
    <name>quib::AutomationPage</name>
    <message>
        <source>Actions</source>
        <translation>アクション</translation>
    </message>
    <message>
        <source>Scripts, launchers and other programs drive Quib by addresses. They can make notes, add to them, open them and search:</source>
        <translation>スクリプトやランチャーなどのプログラムは、アドレスを使って Quib を操作できます。ノートの作成、追記、表示、検索ができます:</translation>
    </message>
    <message>
        <source>Example of an address</source>
        <translation>アドレスの例</translation>
    </message>
    <message>
        <source>Read More</source>
        <translation>詳細を読む</translation>
    </message>
    <message>
        <source>All actions with examples</source>
        <translation>すべてのアクションと例</translation>
    </message>
    <message>
        <source>Token</source>
        <translation>トークン</translation>
    </message>
    <message>
        <source>An action that lists your notes or tags answers only to who names this token. It lies in a file that you alone can read, and never leaves this computer. Give it to scripts that you trust.</source>
        <translation>ノートやタグの一覧を返すアクションは、このトークンを示した相手にのみ応答します。トークンは本人だけが読めるファイルに保存され、このコンピューターの外に出ることはありません。信頼できるスクリプトに渡してください。</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>表示</translation>
    </message>
    <message>
        <source>Show the token</source>
        <translation>トークンを表示</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Copy the token</source>
        <translation>トークンをコピー</translation>
    </message>
    <message>
        <source>Renew…</source>
        <translation>更新…</translation>
    </message>
    <message>
        <source>Renew the token?</source>
        <translation>トークンを更新しますか？</translation>
    </message>
    <message>
        <source>Renew</source>
        <translation>更新</translation>
    </message>
    <message>
        <source>This is the new token.</source>
        <translation>これが新しいトークンです。</translation>
    </message>
    <message>
        <source>Renew the token</source>
        <translation>トークンを更新</translation>
    </message>
    <message>
        <source>Scripts that know the old one are shut out.</source>
        <translation>古いトークンを使うスクリプトは利用できなくなります。</translation>
    </message>
    <message>
        <source>Make a Token</source>
        <translation>トークンを作成</translation>
    </message>
    <message>
        <source>There is no token yet</source>
        <translation>トークンはまだありません</translation>
    </message>
    <message>
        <source>Until there is one, no script reads a list of notes.</source>
        <translation>作成するまで、スクリプトはノートの一覧を読み取れません。</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>メッセージ</translation>
    </message>
    <message>
        <source>The token is on the clipboard.</source>
        <translation>トークンをクリップボードにコピーしました。</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>戻る</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>隠す</translation>
    </message>
    <message>
        <source>Hide the token</source>
        <translation>トークンを隠す</translation>
    </message>
</context>
<context>
    <name>quib::CompletionPopup</name>
    <message>
        <source>Completions</source>
        <translation>補完候補</translation>
    </message>
</context>
<context>
    <name>quib::DesktopIntegration</name>
    <message>
        <source>The desktop has Quib’s shortcuts now; its keyboard settings give them keys.</source>
        <translation>Quib のショートカットをデスクトップに登録しました。キーはデスクトップのキーボード設定で割り当てます。</translation>
    </message>
    <message>
        <source>These keys reach Quib from everywhere: %1</source>
        <translation>どこからでも Quib を呼び出せるキー: %1</translation>
    </message>
    <message>
        <source>The desktop has given Quib no shortcuts.</source>
        <translation>デスクトップは Quib にショートカットを許可しませんでした。</translation>
    </message>
    <message>
        <source>This desktop lets no program take keys everywhere. Its keyboard settings can give a key to the command “%1”.</source>
        <translation>このデスクトップでは、どこからでもキーを受け取ることができません。キーボード設定でコマンド「%1」にキーを割り当てられます。</translation>
    </message>
    <message>
        <source>Copy Command</source>
        <translation>コマンドをコピー</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>クイックノート</translation>
    </message>
    <message>
        <source>New Note</source>
        <translation>新規ノート</translation>
    </message>
    <message>
        <source>Search Notes</source>
        <translation>ノートを検索</translation>
    </message>
    <message>
        <source>Show Quib</source>
        <translation>Quib を表示</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Write a quick note</source>
        <translation>クイックノートを書く</translation>
    </message>
    <message>
        <source>Search the notes</source>
        <translation>ノートを検索</translation>
    </message>
</context>
<context>
    <name>quib::DetachedWindow</name>
    <message>
        <source>Close Window</source>
        <translation>ウィンドウを閉じる</translation>
    </message>
    <message>
        <source>Untitled note</source>
        <translation>無題のノート</translation>
    </message>
    <message>
        <source>Keep Above Others</source>
        <translation>最前面に表示</translation>
    </message>
    <message>
        <source>All Commands…</source>
        <translation>すべてのコマンド…</translation>
    </message>
    <message>
        <source>Find a command</source>
        <translation>コマンドを検索</translation>
    </message>
</context>
<context>
    <name>quib::EditorPage</name>
    <message>
        <source>Text</source>
        <translation>テキスト</translation>
    </message>
    <message>
        <source>Sample of a note</source>
        <translation>ノートの見本</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>フォント</translation>
    </message>
    <message>
        <source>Where this computer lacks a font, one of the same kind stands in.</source>
        <translation>このコンピューターにないフォントは、似たフォントで代用されます。</translation>
    </message>
    <message>
        <source> pt</source>
        <comment>points, behind a font size</comment>
        <translation>&#xa0;pt</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>サイズ</translation>
    </message>
    <message>
        <source>Line height</source>
        <translation>行の高さ</translation>
    </message>
    <message>
        <source>× %1</source>
        <comment>a multiple</comment>
        <translation>×&#xa0;%1</translation>
    </message>
    <message>
        <source>Line width</source>
        <translation>行の幅</translation>
    </message>
    <message>
        <source>%1 em</source>
        <comment>width of a line</comment>
        <translation>%1&#xa0;em</translation>
    </message>
    <message>
        <source>Space between paragraphs</source>
        <translation>段落の間隔</translation>
    </message>
    <message>
        <source>%1 em</source>
        <comment>space</comment>
        <translation>%1&#xa0;em</translation>
    </message>
    <message>
        <source>Use the Font’s Own</source>
        <translation>フォントの標準に戻す</translation>
    </message>
    <message>
        <source>Sizes and spaces</source>
        <translation>サイズと間隔</translation>
    </message>
    <message>
        <source>Every font comes with sizes that suit it.</source>
        <translation>フォントごとに適した設定があります。</translation>
    </message>
    <message>
        <source>Markup</source>
        <translation>マークアップ</translation>
    </message>
    <message>
        <source>Notes are written in</source>
        <translation>ノートの記法</translation>
    </message>
    <message>
        <source>Your notes stay as they are written: this decides how their signs are read.</source>
        <translation>ノートの内容はそのままです。記号の解釈のしかただけが変わります。</translation>
    </message>
    <message>
        <source>Quib’s markup</source>
        <translation>Quib の記法</translation>
    </message>
    <message>
        <source>Markdown</source>
        <translation>Markdown</translation>
    </message>
    <message>
        <source>bold</source>
        <translation>太字</translation>
    </message>
    <message>
        <source>italic</source>
        <translation>斜体</translation>
    </message>
    <message>
        <source>underlined</source>
        <translation>下線</translation>
    </message>
    <message>
        <source>struck</source>
        <translation>取り消し</translation>
    </message>
    <message>
        <source>to do</source>
        <translation>やること</translation>
    </message>
    <message>
        <source>done</source>
        <translation>完了</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>入力</translation>
    </message>
    <message>
        <source>Complete tags, links and languages</source>
        <translation>タグ、リンク、言語を補完</translation>
    </message>
    <message>
        <source>A list of what fits appears while you type.</source>
        <translation>入力中に候補の一覧が表示されます。</translation>
    </message>
    <message>
        <source>Fold completed to-dos</source>
        <translation>完了したタスクを折りたたむ</translation>
    </message>
    <message>
        <source>What is ticked off takes one short line until you open it.</source>
        <translation>チェックした項目は、開くまで 1 行にまとめられます。</translation>
    </message>
    <message>
        <source>Typewriter scrolling</source>
        <translation>タイプライタースクロール</translation>
    </message>
    <message>
        <source>The line you write in stays at the same height.</source>
        <translation>入力中の行を同じ高さに保ちます。</translation>
    </message>
    <message>
        <source>Focus on the paragraph</source>
        <translation>段落にフォーカス</translation>
    </message>
    <message>
        <source>All but the paragraph you write in stands back.</source>
        <translation>入力中の段落以外を薄く表示します。</translation>
    </message>
    <message>
        <source>Show the format bar</source>
        <translation>書式バーを表示</translation>
    </message>
    <message>
        <source>Check the spelling</source>
        <translation>スペルチェック</translation>
    </message>
    <message>
        <source>Misspelt words get a wavy line, in the languages of your dictionaries.</source>
        <translation>インストール済みの辞書の言語で、つづりの誤りに波線を付けます。</translation>
    </message>
    <message>
        <source>There is no dictionary on this computer. Packages of dictionaries are named %1.</source>
        <translation>このコンピューターには辞書がありません。辞書のパッケージ名は %1 です。</translation>
    </message>
    <message>
        <source>Languages of the spelling</source>
        <translation>スペルチェックの言語</translation>
    </message>
    <message>
        <source>Which of them a paragraph is in is told by its words.</source>
        <translation>段落ごとに、使われている単語から言語を判断します。</translation>
    </message>
    <message>
        <source>As the Desktop</source>
        <translation>デスクトップに合わせる</translation>
    </message>
    <message numerus="yes">
        <source>%n languages</source>
        <translation>
            <numerusform>%n 言語</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::EditorPane</name>
    <message>
        <source>Note</source>
        <translation>ノート</translation>
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
        <translation>ノート内を検索</translation>
    </message>
    <message>
        <source>Find in note</source>
        <translation>ノート内を検索</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>検索</translation>
    </message>
    <message>
        <source>Match Case</source>
        <translation>大文字/小文字を区別</translation>
    </message>
    <message>
        <source>Whole Words</source>
        <translation>単語単位</translation>
    </message>
    <message>
        <source>Regular Expression</source>
        <translation>正規表現</translation>
    </message>
    <message>
        <source>Find Previous</source>
        <translation>前を検索</translation>
    </message>
    <message>
        <source>Find Next</source>
        <translation>次を検索</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Replace with</source>
        <translation>置換後の文字列</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>置換</translation>
    </message>
    <message>
        <source>Replace All</source>
        <translation>すべて置換</translation>
    </message>
    <message>
        <source>Not a valid pattern</source>
        <translation>正規表現が不正</translation>
    </message>
    <message>
        <source>Too much to replace</source>
        <translation>置換する量が多すぎます</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>見つかりません</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1/%2</translation>
    </message>
    <message numerus="yes">
        <source>%n replaced</source>
        <translation>
            <numerusform>%n 件置換</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 of more than %2</source>
        <translation>%1/%2 件以上</translation>
    </message>
</context>
<context>
    <name>quib::FormatBar</name>
    <message>
        <source>Format</source>
        <translation>書式</translation>
    </message>
    <message>
        <source>More Formats</source>
        <translation>その他の書式</translation>
    </message>
</context>
<context>
    <name>quib::GeneralPage</name>
    <message>
        <source>Lists</source>
        <translation>一覧</translation>
    </message>
    <message>
        <source>Sort notes by</source>
        <translation>ノートの並べ替え</translation>
    </message>
    <message>
        <source>Date Changed</source>
        <translation>更新日</translation>
    </message>
    <message>
        <source>Date Created</source>
        <translation>作成日</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>タイトル</translation>
    </message>
    <message>
        <source>Order of notes</source>
        <translation>ノートの順序</translation>
    </message>
    <message>
        <source>Pinned notes stand above all others.</source>
        <translation>固定したノートは常に先頭に表示されます。</translation>
    </message>
    <message>
        <source>Descending</source>
        <translation>降順</translation>
    </message>
    <message>
        <source>Ascending</source>
        <translation>昇順</translation>
    </message>
    <message>
        <source>Sort tags by</source>
        <translation>タグの並べ替え</translation>
    </message>
    <message>
        <source>Number of Notes</source>
        <translation>ノートの数</translation>
    </message>
    <message>
        <source>Order of tags</source>
        <translation>タグの順序</translation>
    </message>
    <message>
        <source>Symbols for tags</source>
        <translation>タグのアイコン</translation>
    </message>
    <message>
        <source>Tags in the sidebar get a symbol that fits their name.</source>
        <translation>サイドバーのタグに、名前に合ったアイコンを付けます。</translation>
    </message>
    <message>
        <source>Links</source>
        <translation>リンク</translation>
    </message>
    <message>
        <source>Look up the titles of copied links</source>
        <translation>コピーしたリンクのタイトルを取得</translation>
    </message>
    <message>
        <source>A web address on the clipboard gets the title of its page before you paste it. Quib asks that page for it.</source>
        <translation>クリップボードの Web アドレスに、貼り付け前にページのタイトルを付けます。Quib がそのページに問い合わせます。</translation>
    </message>
    <message>
        <source>On this computer</source>
        <translation>このコンピューター</translation>
    </message>
    <message>
        <source>Show Folder</source>
        <translation>フォルダーを表示</translation>
    </message>
    <message>
        <source>Show the folder of the notes</source>
        <translation>ノートのフォルダーを表示</translation>
    </message>
    <message>
        <source>Notes and attachments</source>
        <translation>ノートと添付ファイル</translation>
    </message>
    <message>
        <source>Write a log file</source>
        <translation>ログファイルに記録</translation>
    </message>
    <message>
        <source>For finding out what went wrong. The log has no text of your notes.</source>
        <translation>問題の原因を調べるためのものです。ログにノートの本文は含まれません。</translation>
    </message>
    <message>
        <source>Show the folder of the logs</source>
        <translation>ログのフォルダーを表示</translation>
    </message>
    <message>
        <source>Logs</source>
        <translation>ログ</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>初期化</translation>
    </message>
    <message>
        <source>Reset…</source>
        <translation>リセット…</translation>
    </message>
    <message>
        <source>Reset all preferences?</source>
        <translation>すべての設定をリセットしますか？</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>リセット</translation>
    </message>
    <message>
        <source>Reset all preferences</source>
        <translation>すべての設定をリセット</translation>
    </message>
    <message>
        <source>Themes, fonts, lists and writing go back to how they were. No note changes.</source>
        <translation>テーマ、フォント、一覧、入力の設定が初期状態に戻ります。ノートは変わりません。</translation>
    </message>
</context>
<context>
    <name>quib::InformationPanel</name>
    <message>
        <source>Note Information</source>
        <translation>ノートの情報</translation>
    </message>
    <message>
        <source>Words</source>
        <translation>単語</translation>
    </message>
    <message>
        <source>Characters</source>
        <translation>文字</translation>
    </message>
    <message>
        <source>Paragraphs</source>
        <translation>段落</translation>
    </message>
    <message>
        <source>Reading time</source>
        <translation>読了時間</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>更新</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>作成</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>目次</translation>
    </message>
    <message>
        <source>Notes That Link Here</source>
        <translation>このノートにリンクしているノート</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 分</translation>
    </message>
    <message>
        <source>Headings of the note stand here.</source>
        <translation>ここにノートの見出しが表示されます。</translation>
    </message>
    <message>
        <source>No note links here yet.</source>
        <translation>まだどのノートからもリンクされていません。</translation>
    </message>
    <message>
        <source>%1, heading %2</source>
        <translation>%1、見出し %2</translation>
    </message>
</context>
<context>
    <name>quib::InlineQuestion</name>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
</context>
<context>
    <name>quib::MessageBar</name>
    <message>
        <source>Close the message</source>
        <translation>メッセージを閉じる</translation>
    </message>
</context>
<context>
    <name>quib::NoteListModel</name>
    <message>
        <source>Untitled note</source>
        <translation>無題のノート</translation>
    </message>
    <message>
        <source>pinned</source>
        <translation>固定</translation>
    </message>
    <message>
        <source>in conflict with another version</source>
        <translation>別のバージョンと競合</translation>
    </message>
    <message>
        <source>%1 of %2 done</source>
        <translation>%2 件中 %1 件完了</translation>
    </message>
</context>
<context>
    <name>quib::NoteListView</name>
    <message>
        <source>Notes</source>
        <translation>ノート</translation>
    </message>
    <message numerus="yes">
        <source>%n notes</source>
        <translation>
            <numerusform>ノート %n 件</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::NoteTextViewSpelling</name>
    <message>
        <source>Looking for Words…</source>
        <translation>候補を検索中…</translation>
    </message>
    <message>
        <source>Add “%1” to the Dictionary</source>
        <translation>「%1」を辞書に追加</translation>
    </message>
    <message>
        <source>Ignore “%1”</source>
        <translation>「%1」を無視</translation>
    </message>
    <message>
        <source>No Other Words Found</source>
        <translation>他の候補はありません</translation>
    </message>
</context>
<context>
    <name>quib::OverlayScrollBar</name>
    <message>
        <source>Scroll bar</source>
        <translation>スクロールバー</translation>
    </message>
</context>
<context>
    <name>quib::PreferencesWindow</name>
    <message>
        <source>Preferences</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>Pages of the preferences</source>
        <translation>設定のページ</translation>
    </message>
    <message>
        <source>General</source>
        <translation>一般</translation>
    </message>
    <message>
        <source>Editor</source>
        <translation>エディター</translation>
    </message>
    <message>
        <source>Themes</source>
        <translation>テーマ</translation>
    </message>
    <message>
        <source>Automation</source>
        <translation>自動化</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>ショートカット</translation>
    </message>
    <message>
        <source>About</source>
        <translation>情報</translation>
    </message>
</context>
<context>
    <name>quib::QuickNoteWindow</name>
    <message>
        <source>Saved as you type. Escape closes.</source>
        <translation>入力と同時に保存されます。Esc で閉じます。</translation>
    </message>
    <message>
        <source>Quick Note</source>
        <translation>クイックノート</translation>
    </message>
    <message>
        <source>Open in Quib</source>
        <translation>Quib で開く</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>ウィンドウを閉じる</translation>
    </message>
    <message>
        <source>Go on in the main window (Ctrl+O)</source>
        <translation>メインウィンドウで続ける (Ctrl+O)</translation>
    </message>
</context>
<context>
    <name>quib::SavingMessage</name>
    <message>
        <source>The file of your notes is damaged, and parts of it cannot be read. Nothing is written to it any more. Quit Quib, and run “quibctl check” in a terminal to learn what is whole.</source>
        <translation>ノートのファイルが壊れていて、一部を読み込めません。これ以上は何も書き込まれません。Quib を終了し、端末で “quibctl check” を実行して、無事な部分を確かめてください。</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: the disk is full. Make some room on it; Quib keeps trying.</source>
        <translation>ノートを保存できません: ディスクがいっぱいです。空きを作ってください。Quib は保存を繰り返し試みます。</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: their folder cannot be written to. Quib keeps trying.</source>
        <translation>ノートを保存できません: フォルダーに書き込めません。Quib は保存を繰り返し試みます。</translation>
    </message>
    <message>
        <source>Your notes cannot be saved: another program does not let go of them. Quib keeps trying.</source>
        <translation>ノートを保存できません: 別のプログラムが使用したままです。Quib は保存を繰り返し試みます。</translation>
    </message>
    <message>
        <source>Your notes cannot be saved. Quib keeps trying. The reason: %1</source>
        <translation>ノートを保存できません。Quib は保存を繰り返し試みます。理由: %1</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>再試行</translation>
    </message>
    <message>
        <source>%1 What you wrote last may be lost if you quit now.</source>
        <comment>%1 is one or more sentences</comment>
        <translation>%1 いま終了すると、最後に書いた内容が失われるかもしれません。</translation>
    </message>
    <message>
        <source>Quit Without Saving</source>
        <translation>保存せずに終了</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
</context>
<context>
    <name>quib::SearchField</name>
    <message>
        <source>notes with something left to do</source>
        <translation>未完了のタスクがあるノート</translation>
    </message>
    <message>
        <source>notes where everything is done</source>
        <translation>すべて完了したノート</translation>
    </message>
    <message>
        <source>notes with to-dos</source>
        <translation>タスクのあるノート</translation>
    </message>
    <message>
        <source>changed today</source>
        <translation>今日更新</translation>
    </message>
    <message>
        <source>changed yesterday</source>
        <translation>昨日更新</translation>
    </message>
    <message>
        <source>changed in the last seven days</source>
        <translation>過去 7 日間に更新</translation>
    </message>
    <message>
        <source>changed on a day: @date(2024-12-31)</source>
        <translation>指定日に更新: @date(2024-12-31)</translation>
    </message>
    <message>
        <source>created on a day: @cdate(2024-12-31)</source>
        <translation>指定日に作成: @cdate(2024-12-31)</translation>
    </message>
    <message>
        <source>notes with pictures</source>
        <translation>画像のあるノート</translation>
    </message>
    <message>
        <source>notes with files</source>
        <translation>ファイルのあるノート</translation>
    </message>
    <message>
        <source>notes with pictures or files</source>
        <translation>画像またはファイルのあるノート</translation>
    </message>
    <message>
        <source>notes with code</source>
        <translation>コードのあるノート</translation>
    </message>
    <message>
        <source>notes with tags</source>
        <translation>タグのあるノート</translation>
    </message>
    <message>
        <source>notes without tags</source>
        <translation>タグのないノート</translation>
    </message>
    <message>
        <source>Search notes</source>
        <translation>ノートを検索</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>検索</translation>
    </message>
    <message>
        <source>Words, &quot;phrases&quot; and #tags; a minus excludes; @ offers more</source>
        <translation>単語、&quot;フレーズ&quot;、#タグ。マイナスで除外、@ でその他の条件</translation>
    </message>
    <message>
        <source>End the search</source>
        <translation>検索を終了</translation>
    </message>
    <message>
        <source>word</source>
        <translation>単語</translation>
    </message>
    <message>
        <source>notes with the word, or with a word that has it in it</source>
        <translation>その単語、またはその単語を含む語のあるノート</translation>
    </message>
    <message>
        <source>&quot;two words&quot;</source>
        <translation>&quot;二つの 単語&quot;</translation>
    </message>
    <message>
        <source>notes with just these words, one behind the other</source>
        <translation>この語がこの順に並ぶノート</translation>
    </message>
    <message>
        <source>-word</source>
        <translation>-単語</translation>
    </message>
    <message>
        <source>notes without the word</source>
        <translation>その単語のないノート</translation>
    </message>
    <message>
        <source>#tag</source>
        <translation>#タグ</translation>
    </message>
    <message>
        <source>notes with the tag in their text</source>
        <translation>本文にそのタグのあるノート</translation>
    </message>
</context>
<context>
    <name>quib::ShortcutsPage</name>
    <message>
        <source>or</source>
        <comment>between two shortcuts</comment>
        <translation>または</translation>
    </message>
    <message>
        <source>No shortcut matches.</source>
        <translation>一致するショートカットはありません。</translation>
    </message>
    <message>
        <source>Search commands and keys</source>
        <translation>コマンドとキーを検索</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>キーボードショートカット</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>コマンド</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>キー</translation>
    </message>
</context>
<context>
    <name>quib::SidebarModel</name>
    <message>
        <source>Tags</source>
        <translation>タグ</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n note(s)</source>
        <translation>
            <numerusform>%1、ノート %n 件</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>quib::SidebarView</name>
    <message>
        <source>Lists and tags</source>
        <translation>一覧とタグ</translation>
    </message>
</context>
<context>
    <name>quib::SpokenNoteText</name>
    <message>
        <source>checked item</source>
        <translation>チェック済みの項目</translation>
    </message>
    <message>
        <source>unchecked item</source>
        <translation>未チェックの項目</translation>
    </message>
    <message>
        <source>heading %1</source>
        <translation>見出し %1</translation>
    </message>
    <message>
        <source>picture %1</source>
        <translation>画像 %1</translation>
    </message>
    <message>
        <source>file %1</source>
        <translation>ファイル %1</translation>
    </message>
    <message>
        <source>separator</source>
        <translation>区切り線</translation>
    </message>
    <message>
        <source>folded text</source>
        <translation>折りたたまれたテキスト</translation>
    </message>
    <message>
        <source>link to a note</source>
        <translation>ノートへのリンク</translation>
    </message>
    <message>
        <source>link</source>
        <translation>リンク</translation>
    </message>
</context>
<context>
    <name>quib::SymbolPicker</name>
    <message>
        <source>Symbol of the tag</source>
        <translation>タグのアイコン</translation>
    </message>
    <message>
        <source>Symbols</source>
        <translation>アイコン</translation>
    </message>
    <message>
        <source>By the Tag’s Name</source>
        <translation>タグの名前に合わせる</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>タグ</translation>
    </message>
    <message>
        <source>Animal</source>
        <translation>動物</translation>
    </message>
    <message>
        <source>Art</source>
        <translation>アート</translation>
    </message>
    <message>
        <source>Book</source>
        <translation>本</translation>
    </message>
    <message>
        <source>Bug</source>
        <translation>虫</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>カレンダー</translation>
    </message>
    <message>
        <source>Car</source>
        <translation>車</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>コード</translation>
    </message>
    <message>
        <source>Film</source>
        <translation>映画</translation>
    </message>
    <message>
        <source>Food</source>
        <translation>食べ物</translation>
    </message>
    <message>
        <source>Game</source>
        <translation>ゲーム</translation>
    </message>
    <message>
        <source>Gift</source>
        <translation>プレゼント</translation>
    </message>
    <message>
        <source>Health</source>
        <translation>健康</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>家</translation>
    </message>
    <message>
        <source>Idea</source>
        <translation>アイデア</translation>
    </message>
    <message>
        <source>Journal</source>
        <translation>日記</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>リンク</translation>
    </message>
    <message>
        <source>Money</source>
        <translation>お金</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>音楽</translation>
    </message>
    <message>
        <source>People</source>
        <translation>人</translation>
    </message>
    <message>
        <source>Photo</source>
        <translation>写真</translation>
    </message>
    <message>
        <source>Plant</source>
        <translation>植物</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>プロジェクト</translation>
    </message>
    <message>
        <source>School</source>
        <translation>学校</translation>
    </message>
    <message>
        <source>Science</source>
        <translation>科学</translation>
    </message>
    <message>
        <source>Shopping</source>
        <translation>買い物</translation>
    </message>
    <message>
        <source>Sport</source>
        <translation>スポーツ</translation>
    </message>
    <message>
        <source>To-do</source>
        <translation>タスク</translation>
    </message>
    <message>
        <source>Travel</source>
        <translation>旅行</translation>
    </message>
    <message>
        <source>Work</source>
        <translation>仕事</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>文章</translation>
    </message>
</context>
<context>
    <name>quib::ThemeGallery</name>
    <message>
        <source>Themes</source>
        <translation>テーマ</translation>
    </message>
</context>
<context>
    <name>quib::ThemeGalleryModel</name>
    <message>
        <source>%1, in use</source>
        <comment>theme</comment>
        <translation>%1、使用中</translation>
    </message>
    <message>
        <source>%1, in use when the desktop is light</source>
        <comment>theme</comment>
        <translation>%1、デスクトップが明るいときに使用</translation>
    </message>
    <message>
        <source>%1, in use when the desktop is dark</source>
        <comment>theme</comment>
        <translation>%1、デスクトップが暗いときに使用</translation>
    </message>
</context>
<context>
    <name>quib::ThemePreview</name>
    <message>
        <source>%1Low tide%2 is at nine. Take the %3slow path%4 along the harbour.</source>
        <translation>朝九時に %1干潮%2 です。港沿いの %3のんびり道%4 を行きましょう。</translation>
    </message>
    <message>
        <source>A day by the sea</source>
        <translation>海辺の一日</translation>
    </message>
    <message>
        <source>Pack the ::blue:: bag</source>
        <translation>::青い:: かばんを用意する</translation>
    </message>
    <message>
        <source>Buy bread and [[Cheese]]</source>
        <translation>パンと [[チーズ]] を買う</translation>
    </message>
    <message>
        <source>The sea is never late.</source>
        <translation>海は決して遅れない。</translation>
    </message>
    <message>
        <source>travel/coast</source>
        <translation>旅行/海岸</translation>
    </message>
</context>
<context>
    <name>quib::ThemesPage</name>
    <message>
        <source>Choose the theme for a light desktop</source>
        <translation>明るいデスクトップ用のテーマを選ぶ</translation>
    </message>
    <message>
        <source>Choose the theme for a dark desktop</source>
        <translation>暗いデスクトップ用のテーマを選ぶ</translation>
    </message>
    <message>
        <source>Light desktop: %1</source>
        <translation>明るいデスクトップ: %1</translation>
    </message>
    <message>
        <source>Dark desktop: %1</source>
        <translation>暗いデスクトップ: %1</translation>
    </message>
    <message>
        <source>Quib follows the desktop, which is dark at the moment.</source>
        <translation>Quib はデスクトップの外観に従います。現在は暗い外観です。</translation>
    </message>
    <message>
        <source>Quib follows the desktop, which is light at the moment.</source>
        <translation>Quib はデスクトップの外観に従います。現在は明るい外観です。</translation>
    </message>
</context>
</TS>
