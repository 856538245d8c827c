"""The same notes in the form of each program.

A library is a list of texts; the last is the large note. Each writer puts it below a home and says nothing.
"""

import datetime
import sqlite3
import uuid
from xml.sax.saxutils import escape

LARGE_TITLE = "Large note"


def title_of(text):
    return text.partition("\n")[0].lstrip("# ").strip()


def without_markup_title(text):
    """The text with its title as bare words, for programs in which a hash is no header."""
    return title_of(text) + text[len(text.partition("\n")[0]):]


def moments(count):
    """An instant for each note, a minute apart, the last one the newest."""
    newest = datetime.datetime(2026, 1, 1, 12, 0, 0)
    return [newest - datetime.timedelta(minutes=count - 1 - index) for index in range(count)]


def write_gnote(texts, home):
    folder = home / ".local/share/gnote"
    folder.mkdir(parents=True)
    for text, moment in zip(texts, moments(len(texts))):
        identifier = uuid.uuid5(uuid.NAMESPACE_OID, title_of(text))
        date = moment.isoformat() + ".000000Z"
        (folder / f"{identifier}.note").write_text(
            '<?xml version="1.0"?>\n'
            '<note version="0.3" xmlns:link="http://beatniksoftware.com/tomboy/link" '
            'xmlns:size="http://beatniksoftware.com/tomboy/size" xmlns="http://beatniksoftware.com/tomboy">'
            f'<title>{escape(title_of(text))}</title><text xml:space="preserve">'
            '<note-content xmlns:link="http://beatniksoftware.com/tomboy/link">'
            f"{escape(without_markup_title(text))}</note-content></text>"
            f"<last-change-date>{date}</last-change-date><last-metadata-change-date>{date}</last-metadata-change-date>"
            f"<create-date>{date}</create-date><cursor-position>0</cursor-position>"
            "<selection-bound-position>-1</selection-bound-position><width>0</width><height>0</height></note>\n",
            encoding="utf-8")


def write_cherrytree(texts, home):
    """One file of SQLite, which is the form for many notes: texts are read when they are shown."""
    database = sqlite3.connect(home / "library.ctb")
    database.executescript("""
        CREATE TABLE node (node_id INTEGER UNIQUE, name TEXT, txt TEXT, syntax TEXT, tags TEXT, is_ro INTEGER,
            is_richtxt INTEGER, has_codebox INTEGER, has_table INTEGER, has_image INTEGER, level INTEGER,
            ts_creation INTEGER, ts_lastsave INTEGER);
        CREATE TABLE codebox (node_id INTEGER, offset INTEGER, justification TEXT, txt TEXT, syntax TEXT,
            width INTEGER, height INTEGER, is_width_pix INTEGER, do_highl_bra INTEGER, do_show_linenum INTEGER);
        CREATE TABLE grid (node_id INTEGER, offset INTEGER, justification TEXT, txt TEXT, col_min INTEGER,
            col_max INTEGER);
        CREATE TABLE image (node_id INTEGER, offset INTEGER, justification TEXT, anchor TEXT, png BLOB, filename TEXT,
            link TEXT, time INTEGER);
        CREATE TABLE children (node_id INTEGER UNIQUE, father_id INTEGER, sequence INTEGER);
        CREATE TABLE bookmark (node_id INTEGER UNIQUE, sequence INTEGER);
        """)
    with database:
        for number, (text, moment) in enumerate(zip(texts, moments(len(texts))), 1):
            content = f'<?xml version="1.0" encoding="UTF-8"?>\n<node><rich_text>{escape(text)}</rich_text></node>'
            seconds = int(moment.timestamp())
            database.execute("INSERT INTO node VALUES (?,?,?,'custom-colors','',0,1,0,0,0,0,?,?)",
                             (number, title_of(text), content, seconds, seconds))
            database.execute("INSERT INTO children VALUES (?,0,?)", (number, number))
    database.close()


def page_names(texts):
    """Titles of pages must be plain: numbers stand for them, the large note behind all others."""
    return [f"Note_{number:05}" for number in range(1, len(texts))] + ["Zlarge"]


def write_zim(texts, home):
    folder = home / "Notebook"
    folder.mkdir()
    (folder / "notebook.zim").write_text("[Notebook]\nname=Notebook\nversion=0.4\nhome=Note 00001\n", encoding="utf-8")
    for name, text, moment in zip(page_names(texts), texts, moments(len(texts))):
        (folder / f"{name}.txt").write_text(
            "Content-Type: text/x-zim-wiki\nWiki-Format: zim 0.6\n"
            f"Creation-Date: {moment.isoformat()}+00:00\n\n====== {title_of(text)} ======\n"
            f"{text.partition(chr(10))[2]}", encoding="utf-8")


def write_ghostwriter(texts, home):
    """It has no library: one file is all it opens."""
    (home / "large.md").write_text(texts[-1], encoding="utf-8")
