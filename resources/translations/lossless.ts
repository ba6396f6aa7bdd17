<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Tivox</name>
    <message>
        <source>JPEG lossless transformation: unsupported</source>
        <translation>Verlustfreie JPEG-Transformation: nicht unterstützt</translation>
    </message>
    <message>
        <source>Error in lossless JPEG transform.</source>
        <translation>Fehler bei der verlustfreien JPEG-Transformation.</translation>
    </message>
    <message>
        <source>Failed to delete the original file. %s</source>
        <translation>Die Originaldatei konnte nicht gelöscht werden. %s</translation>
    </message>
    <message>
        <source>Failed to rename the temporary file. %s</source>
        <translation>Die temporäre Datei konnte nicht umbenannt werden. %s</translation>
    </message>
</context>
</TS>
