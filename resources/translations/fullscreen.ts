<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>Tivox</name>
    <message>
        <source>Photo Cache not initialized</source>
        <translation>Foto-Cache nicht initialisiert</translation>
    </message>
    <message>
        <source>Really crop the image(s)?</source>
        <translation>Bild(er) wirklich zuschneiden?</translation>
    </message>
    <message>
        <source>Crop</source>
        <translation>Zuschneiden</translation>
    </message>
    <message>
        <source>1 photo has changes that are not committed.
Commit them before leaving? No discards them.</source>
        <translation>1 Foto hat Änderungen, die noch nicht übernommen sind.
Vor dem Verlassen übernehmen? Nein verwirft sie.</translation>
    </message>
    <message>
        <source>%s photos have changes that are not committed.
Commit them before leaving? No discards them.</source>
        <translation>%s Fotos haben Änderungen, die noch nicht übernommen sind.
Vor dem Verlassen übernehmen? Nein verwirft sie.</translation>
    </message>
    <message>
        <source>Leave Full Screen Editing</source>
        <translation>Vollbildbearbeitung verlassen</translation>
    </message>
    <message>
        <source>Writing the changes into the photos</source>
        <translation>Die Änderungen werden in die Fotos geschrieben</translation>
    </message>
    <message>
        <source>Discarding the changes</source>
        <translation>Die Änderungen werden verworfen</translation>
    </message>
</context>
<context>
    <name>CImageOpsDlg</name>
    <message>
        <source>Image Operations</source>
        <translation>Bildbearbeitung</translation>
    </message>
    <message>
        <source>Basic</source>
        <translation>Basis</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Photo</source>
        <translation>Foto</translation>
    </message>
    <message>
        <source>Web</source>
        <translation>Web</translation>
    </message>
    <message>
        <source>Select Marker:</source>
        <translation>Markierung wählen:</translation>
    </message>
    <message>
        <source>Process:</source>
        <translation>Bearbeiten:</translation>
    </message>
    <message>
        <source>Current</source>
        <translation>Aktuelles</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Changes:</source>
        <translation>Änderungen:</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Verwerfen</translation>
    </message>
    <message>
        <source>&amp;Commit</source>
        <translation>Ü&amp;bernehmen</translation>
    </message>
</context>
<context>
    <name>CBasicPage</name>
    <message>
        <source>Rotate</source>
        <translation>Drehen</translation>
    </message>
    <message>
        <source>Left 90°</source>
        <translation>Links 90°</translation>
    </message>
    <message>
        <source>Right 90°</source>
        <translation>Rechts 90°</translation>
    </message>
    <message>
        <source>180°</source>
        <translation>180°</translation>
    </message>
    <message>
        <source>Mirror</source>
        <translation>Spiegeln</translation>
    </message>
    <message>
        <source>Horizontal</source>
        <translation>Horizontal</translation>
    </message>
    <message>
        <source>Vertical</source>
        <translation>Vertikal</translation>
    </message>
    <message>
        <source>Delete Photos</source>
        <translation>Fotos löschen</translation>
    </message>
</context>
<context>
    <name>CColorPage</name>
    <message>
        <source>Brightness</source>
        <translation>Helligkeit</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>Kontrast</translation>
    </message>
    <message>
        <source>Sharpness</source>
        <translation>Schärfe</translation>
    </message>
    <message>
        <source>Gamma</source>
        <translation>Gamma</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>Sättigung</translation>
    </message>
    <message>
        <source>Grayscale</source>
        <translation>Graustufen</translation>
    </message>
    <message>
        <source>Negative</source>
        <translation>Negativ</translation>
    </message>
    <message>
        <source>Reset Color</source>
        <translation>Farbe zurücksetzen</translation>
    </message>
</context>
<context>
    <name>CPhotoPage</name>
    <message>
        <source>Free
Crop</source>
        <translation>Freier
Zuschnitt</translation>
    </message>
    <message>
        <source>Unit:
cm</source>
        <translation>Einheit:
cm</translation>
    </message>
    <message>
        <source>Unit:
inch</source>
        <translation>Einheit:
Zoll</translation>
    </message>
    <message>
        <source>Denoise</source>
        <translation>Entrauschen</translation>
    </message>
    <message>
        <source>Red Eyes
Reduction</source>
        <translation>Rote Augen
entfernen</translation>
    </message>
    <message>
        <source>Resize</source>
        <translation>Größe ändern</translation>
    </message>
    <message>
        <source>Keep Aspect Ratio</source>
        <translation>Seitenverhältnis beibehalten</translation>
    </message>
</context>
<context>
    <name>CWebPage</name>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Auflösung</translation>
    </message>
    <message>
        <source>Tiles</source>
        <translation>Kacheln</translation>
    </message>
    <message>
        <source>Photos</source>
        <translation>Fotos</translation>
    </message>
    <message>
        <source>Thumbnails</source>
        <translation>Miniaturen</translation>
    </message>
    <message>
        <source>Create Gallery</source>
        <translation>Galerie erstellen</translation>
    </message>
</context>
<context>
    <name>QtStepProgress</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
</TS>
