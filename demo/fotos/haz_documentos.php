<?php
/** Writes the documents of the sample company, one-page PDF files: haz_documentos.php CARPETA */
const DOCUMENTOS = array(
    'curado-del-hierro.pdf' => array('Cómo curar el hierro y el acero pulido',
        '1. Lava la pieza con agua caliente y jabón y sécala bien.',
        '2. Caliéntala a fuego suave y úntala con una capa fina de aceite.',
        '3. Déjala humear diez minutos, retira el exceso y repite dos veces.',
        '4. Después de cada uso: agua caliente, secado inmediato y una gota de aceite.',
        'Una pieza bien curada es negra, brillante y no pega. Nunca al lavavajillas.'),
    'cuidado-del-barro.pdf' => array('Primer uso y cuidado del barro',
        '1. Sumerge la pieza en agua durante 24 horas.',
        '2. Frota la base sin esmaltar con un diente de ajo.',
        '3. Llénala de agua con un chorro de vinagre y llévala a hervir muy despacio.',
        'Usa siempre un difusor y evita los cambios bruscos de temperatura.'),
    'plantilla-cerradura.pdf' => array('Montaje de la cerradura de sobreponer',
        'Mano de la puerta: la pieza es reversible, gira el picaporte 180°.',
        'Taladro del cilindro: 30 mm, a 60 mm del canto.',
        'Fija primero los tornillos 1 y 3, comprueba el juego y aprieta el 2 y el 4.',
        'Cerradero: a 2 mm de la línea de cierre.'),
    'calendario-de-siembra.pdf' => array('Calendario de siembra de la huerta',
        'Enero: habas, guisantes y ajos.',
        'Febrero a abril: tomate, pimiento y berenjena en semillero.',
        'Mayo: calabacín, pepino, judía y maíz, ya al aire libre.',
        'Agosto: coles, brócoli y acelgas.',
        'Octubre: espinacas, lechugas de invierno y cebolla tierna.'),
);

function texto_pdf($texto)
{
    return addcslashes(iconv('UTF-8', 'Windows-1252', $texto), '()\\');
}

function pagina(array $lineas)
{
    $titulo = array_shift($lineas);
    $orden = "BT /F2 20 Tf 60 770 Td (" . texto_pdf($titulo) . ") Tj ET\n"
        . "0.31 0.54 0.34 rg 60 756 475 3 re f 0 g\n";
    foreach ($lineas as $i => $linea) {
        $orden .= sprintf("BT /F1 12 Tf 60 %d Td (%s) Tj ET\n", 722 - 26 * $i, texto_pdf($linea));
    }
    return $orden . "BT /F1 9 Tf 60 50 Td (" . texto_pdf('Menaje y Ferretería Valdeolmillo')
        . ") Tj ET\n";
}

function pdf(array $lineas)
{
    $letra = '<< /Type /Font /Subtype /Type1 /Encoding /WinAnsiEncoding /BaseFont /Helvetica%s >>';
    $contenido = pagina($lineas);
    $objetos = array(
        '<< /Type /Catalog /Pages 2 0 R >>',
        '<< /Type /Pages /Kids [3 0 R] /Count 1 >>',
        '<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 6 0 R'
            . ' /Resources << /Font << /F1 4 0 R /F2 5 0 R >> >> >>',
        sprintf($letra, ''),
        sprintf($letra, '-Bold'),
        '<< /Length ' . strlen($contenido) . " >>\nstream\n" . $contenido . 'endstream',
    );
    $texto = "%PDF-1.4\n";
    $lugares = array();
    foreach ($objetos as $i => $objeto) {
        $lugares[] = strlen($texto);
        $texto .= ($i + 1) . " 0 obj\n$objeto\nendobj\n";
    }
    $tabla = strlen($texto);
    $texto .= "xref\n0 " . (count($objetos) + 1) . "\n0000000000 65535 f \n";
    foreach ($lugares as $lugar) {
        $texto .= sprintf("%010d 00000 n \n", $lugar);
    }
    return $texto . "trailer\n<< /Size " . (count($objetos) + 1)
        . " /Root 1 0 R >>\nstartxref\n$tabla\n%%EOF\n";
}

if ($argc !== 2) {
    fwrite(STDERR, "uso: haz_documentos.php CARPETA\n");
    exit(2);
}
foreach (DOCUMENTOS as $fichero => $lineas) {
    if (file_put_contents($argv[1] . '/' . $fichero, pdf($lineas)) === false) {
        fwrite(STDERR, "No se puede escribir $fichero\n");
        exit(1);
    }
}
