<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Tivox</name>
    <message>
        <source>Could not read %s: the picture is too large for the memory budget.</source>
        <translation>%s konnte nicht gelesen werden: Das Bild ist zu groß für das Speicherbudget.</translation>
    </message>
    <message>
        <source>Could not read %s: the JPEG data is damaged or incomplete.</source>
        <translation>%s konnte nicht gelesen werden: Die JPEG-Daten sind beschädigt oder unvollständig.</translation>
    </message>
    <message>
        <source>Could not read %s: it is not a readable JPEG picture.</source>
        <translation>%s konnte nicht gelesen werden: Es ist kein lesbares JPEG-Bild.</translation>
    </message>
    <message>
        <source>Could not read %s: %s</source>
        <translation>%s konnte nicht gelesen werden: %s</translation>
    </message>
</context>
</TS>
