<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Tivox</name>
    <message>
        <source>Previous</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Gallery</source>
        <translation>Galerie</translation>
    </message>
    <message>
        <source>Error creating thumbnail page: aborting</source>
        <translation>Fehler beim Erstellen einer Miniaturseite: Abbruch</translation>
    </message>
    <message>
        <source>Error creating photo page: aborting</source>
        <translation>Fehler beim Erstellen einer Fotoseite: Abbruch</translation>
    </message>
    <message>
        <source>Create an HTML gallery from the current photo only?</source>
        <translation>Eine HTML-Galerie nur aus dem aktuellen Foto erstellen?</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>Bestätigen</translation>
    </message>
    <message>
        <source>Error creating gallery directories</source>
        <translation>Fehler beim Erstellen der Galerieverzeichnisse</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>The gallery folder %s is, holds or lies inside the photo folder or its backup folder, and a gallery empties its folder first. Nothing was deleted. Please choose another base folder for HTML galleries.</source>
        <translation>Der Galerieordner %s ist der Fotoordner oder sein Sicherungsordner, enthält einen davon oder liegt darin, und eine Galerie leert ihren Ordner zuerst. Es wurde nichts gelöscht. Bitte wählen Sie einen anderen Basisordner für HTML-Galerien.</translation>
    </message>
    <message>
        <source>The folder %s holds files that no gallery run wrote, and a gallery empties its folder first. Delete everything in it and write the gallery there?</source>
        <translation>Der Ordner %s enthält Dateien, die keine Galerie geschrieben hat, und eine Galerie leert ihren Ordner zuerst. Alles darin löschen und die Galerie dort schreiben?</translation>
    </message>
    <message>
        <source>Writing the gallery pictures</source>
        <translation>Die Bilder der Galerie werden geschrieben</translation>
    </message>
</context>
</TS>
