<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Tivox</name>
    <message>
        <source>Could not write %s: the disc is full.</source>
        <translation>%s konnte nicht geschrieben werden: Der Datenträger ist voll.</translation>
    </message>
    <message>
        <source>Could not write %s: the disc is read-only.</source>
        <translation>%s konnte nicht geschrieben werden: Der Datenträger ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>Could not write %s: the folder is read-only.</source>
        <translation>%s konnte nicht geschrieben werden: Der Ordner ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>Could not write %s: %s</source>
        <translation>%s konnte nicht geschrieben werden: %s</translation>
    </message>
    <message>
        <source>Could not write %s: it is not a regular file.</source>
        <translation>%s konnte nicht geschrieben werden: Es ist keine gewöhnliche Datei.</translation>
    </message>
    <message>
        <source>Could not write %s: the file is write-protected.</source>
        <translation>%s konnte nicht geschrieben werden: Die Datei ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>Could not move %s to the Trash: %s</source>
        <translation>%s konnte nicht in den Papierkorb verschoben werden: %s</translation>
    </message>
    <message>
        <source>Could not move %s to the Trash: its volume has no Trash folder.</source>
        <translation>%s konnte nicht in den Papierkorb verschoben werden: Sein Datenträger hat keinen Papierkorb.</translation>
    </message>
    <message>
        <source>Move 1 photo to the Trash?</source>
        <translation>1 Foto in den Papierkorb verschieben?</translation>
    </message>
    <message>
        <source>Move %s photos to the Trash?</source>
        <translation>%s Fotos in den Papierkorb verschieben?</translation>
    </message>
    <message>
        <source>Move 1 photo (%s) to the Trash?</source>
        <translation>1 Foto (%s) in den Papierkorb verschieben?</translation>
    </message>
    <message>
        <source>Move %s photos (%s) to the Trash?</source>
        <translation>%s Fotos (%s) in den Papierkorb verschieben?</translation>
    </message>
    <message>
        <source>red</source>
        <translation>rot</translation>
    </message>
    <message>
        <source>green</source>
        <translation>grün</translation>
    </message>
    <message>
        <source>blue</source>
        <translation>blau</translation>
    </message>
</context>
</TS>
