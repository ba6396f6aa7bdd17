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
</context>
</TS>
