<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Tivox</name>
    <message>
        <source>Could not delete %s</source>
        <translation>%s konnte nicht gelöscht werden</translation>
    </message>
    <message>
        <source>ResizePhoto: filename error</source>
        <translation>ResizePhoto: Fehler im Dateinamen</translation>
    </message>
    <message>
        <source>Could not read %s</source>
        <translation>%s konnte nicht gelesen werden</translation>
    </message>
    <message>
        <source>Could not write %s</source>
        <translation>%s konnte nicht geschrieben werden</translation>
    </message>
    <message>
        <source>A picture of %s x %s pixels is too large or empty.</source>
        <translation>Ein Bild von %s x %s Pixeln ist zu groß oder leer.</translation>
    </message>
    <message>
        <source>The crop rectangle is empty.</source>
        <translation>Das Zuschneide-Rechteck ist leer.</translation>
    </message>
    <message>
        <source>The crop rectangle lies outside the picture.</source>
        <translation>Das Zuschneide-Rechteck liegt außerhalb des Bildes.</translation>
    </message>
    <message>
        <source>Processing the photos</source>
        <translation>Die Fotos werden bearbeitet</translation>
    </message>
    <message>
        <source>%s photos could not be processed:
%s</source>
        <translation>%s Fotos konnten nicht bearbeitet werden:
%s</translation>
    </message>
    <message>
        <source>and %s more</source>
        <translation>und %s weitere</translation>
    </message>
</context>
</TS>
