INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('01', '0', 'Cocina y mesa', 'Kitchen & table', 'S', Null, 'C:\KOV\FOTOS\FAM_01.jpg',
    'Todo para guisar, servir y disfrutar de la mesa.' & Chr(13) & Chr(10) & 'Portes gratis en pedidos de más de 60 €.',
    'Everything you need to cook, serve & enjoy a good meal.' & Chr(13) & Chr(10) & 'Free delivery on orders over 60 €.',
    'cocina, mesa, menaje', 'kitchen, table, cookware',
    'Menaje de cocina y mesa con envío en 48 horas.',
    'Cookware and tableware delivered in 48 hours.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0101', '1', 'Sartenes, cazuelas y paelleras', 'Pots and pans', 'S', Null, 'C:\KOV\FOTOS\FAM_0101.jpg',
    'Hierro, acero, barro y fundición para todos los fuegos.',
    'Iron, steel, clay and cast iron for every hob.',
    'sartenes, cazuelas, paelleras', 'pans, pots, paella pans',
    'Sartenes, cazuelas y paelleras de siempre.',
    'Pots and pans made to last.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('010101', '2', 'Sartenes', 'Frying pans', 'S', Null, 'C:\KOV\FOTOS\FAM_010101.jpg',
    'Desde la sartén de hierro de la abuela hasta el antiadherente más ligero.',
    'From the traditional iron pan to the lightest non-stick.',
    'sartén, hierro, antiadherente', 'frying pan, iron, non-stick',
    'Sartenes de hierro, fundición y antiadherentes.',
    'Iron, cast iron and non-stick frying pans.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('010102', '2', 'Cazuelas y ollas', 'Pots', 'S', Null, 'C:\KOV\FOTOS\FAM_010102.jpg',
    'Para guisos de cuchara, arroces caldosos y pucheros de domingo.',
    'For stews, soups and slow Sunday cooking.',
    'cazuela, olla, puchero', 'pot, casserole, stew',
    'Cazuelas de barro y ollas de acero.',
    'Clay casseroles and steel pots.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('010103', '2', 'Paelleras', 'Paella pans', 'S', Null, 'C:\KOV\FOTOS\FAM_010103.jpg',
    'Paelleras y complementos para cocinar al aire libre, de 2 a 20 raciones.',
    'Paella pans and stands for cooking outdoors, from 2 to 20 servings.',
    'paellera, paella, arroz', 'paella pan, rice',
    'Paelleras pulidas y esmaltadas con sus trípodes.',
    'Polished and enamelled paella pans with stands.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0102', '1', 'Cuchillos y utensilios', 'Knives and utensils', 'S', Null, 'C:\KOV\FOTOS\FAM_0102.jpg',
    'Cortar, picar, majar y abrir: lo que nunca falta en el cajón.',
    'Cutting, chopping, crushing and opening: the drawer essentials.',
    'cuchillos, tablas, morteros', 'knives, boards, mortars',
    'Cuchillos, tablas de olivo y morteros.',
    'Knives, olive wood boards and mortars.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0103', '1', 'La mesa', 'Tableware', 'S', Null, Null,
    'Loza, vidrio y barro para poner la mesa cada día.',
    'Earthenware, glass and clay for the everyday table.',
    'vajilla, vasos, café', 'plates, glasses, coffee',
    'Vajilla, vasos y servicio de café.',
    'Plates, glasses and coffee sets.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('010301', '2', 'Platos y fuentes', 'Plates and dishes', 'S', Null, 'C:\KOV\FOTOS\FAM_010301.jpg',
    'Loza blanca y decorada a mano, apta para lavavajillas.',
    'White and hand-painted earthenware, dishwasher safe.',
    'platos, fuentes, loza', 'plates, dishes, earthenware',
    'Platos, fuentes y ensaladeras de loza.',
    'Earthenware plates, dishes and salad bowls.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('010302', '2', 'Vasos, copas y jarras', 'Glasses and jugs', 'S', Null, 'C:\KOV\FOTOS\FAM_010302.jpg',
    'Vidrio templado y reciclado.',
    'Tempered and recycled glass.',
    'vasos, copas, jarras', 'glasses, wine glasses, jugs',
    'Vasos, copas y jarras de vidrio y barro.',
    'Glasses, wine glasses and jugs.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('010303', '2', 'Café y té', 'Coffee and tea', 'S', Null, 'C:\KOV\FOTOS\FAM_010303.jpg',
    'Cafeteras italianas, juegos de café y teteras.',
    'Stovetop coffee makers, coffee sets and teapots.',
    'cafetera, tetera', 'coffee maker, teapot',
    'Cafeteras, tazas y teteras.',
    'Coffee makers, cups and teapots.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('02', '0', 'Ferretería', 'Hardware', 'S', Null, 'C:\KOV\FOTOS\FAM_02.jpg',
    'Herramienta, fijación, seguridad y luz para la casa.',
    'Tools, fixings, security and light for the home.',
    'ferretería, herramientas', 'hardware, tools',
    'La ferretería de Valdeolmillo, también en línea.',
    'The Valdeolmillo hardware shop, now online.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0201', '1', 'Herramienta manual', 'Hand tools', 'S', Null, 'C:\KOV\FOTOS\FAM_0201.jpg',
    'Herramienta de mango largo, de precisión y de medida.',
    'Striking, precision and measuring tools.',
    'herramienta, bricolaje', 'hand tools, DIY',
    'Herramienta manual para casa y taller.',
    'Hand tools for home and workshop.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('020101', '2', 'Martillos y mazas', 'Hammers and mallets', 'S', Null, 'C:\KOV\FOTOS\FAM_020101.jpg',
    'Con mango de madera de fresno o de fibra.',
    'With ash wood or fibre handles.',
    'martillo, maza', 'hammer, mallet',
    'Martillos de carpintero y mazas de goma.',
    'Claw hammers and rubber mallets.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('020102', '2', 'Destornilladores y llaves', 'Screwdrivers and spanners', 'S', Null, 'C:\KOV\FOTOS\FAM_020102.jpg',
    'Puntas templadas y mangos que no resbalan.',
    'Hardened tips and non-slip grips.',
    'destornillador, llave', 'screwdriver, spanner',
    'Destornilladores, llaves ajustables y Allen.',
    'Screwdrivers, adjustable spanners and hex keys.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('020103', '2', 'Medir y marcar', 'Measuring and marking', 'S', Null, 'C:\KOV\FOTOS\FAM_020103.jpg',
    'Medir dos veces y cortar una.',
    'Measure twice, cut once.',
    'flexómetro, nivel', 'tape measure, level',
    'Flexómetros y niveles de burbuja.',
    'Tape measures and spirit levels.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0202', '1', 'Almacén de granel', 'Bulk store', 'N', Null, Null,
    'Agrupa en el almacén lo que se vende por cajas o por metros.',
    Null,
    Null, Null,
    Null,
    Null);
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('020201', '2', 'Tornillería y fijación', 'Screws and fixings', 'S', Null, 'C:\KOV\FOTOS\FAM_020201.jpg',
    'Por cajas, con precio por unidad de envase.',
    'Sold by the box.',
    'tornillos, tacos, escarpias', 'screws, wall plugs, hooks',
    'Tornillos, tacos y escarpias por cajas.',
    'Screws, wall plugs and hooks by the box.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('020202', '2', 'Cuerdas y cadenas', 'Ropes and chains', 'S', Null, 'C:\KOV\FOTOS\FAM_020202.jpg',
    'Cortamos a la medida que nos pidas: el precio es por metro.',
    'Cut to length: priced by the metre.',
    'cuerda, cadena', 'rope, chain',
    'Cuerdas y cadenas por metros.',
    'Ropes and chains by the metre.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0203', '1', 'Seguridad del hogar', 'Home security', 'S', Null, 'C:\KOV\FOTOS\FAM_0203.jpg',
    'Candados, cerraduras y buzones con servicio de llaves iguales.',
    'Padlocks, locks and letterboxes; keyed-alike service available.',
    'candado, cerradura, buzón', 'padlock, lock, letterbox',
    'Candados, cerraduras y buzones.',
    'Padlocks, locks and letterboxes.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0204', '1', 'Luz y electricidad', 'Light and electricity', 'S', Null, 'C:\KOV\FOTOS\FAM_0204.jpg',
    'Bombillas LED, linternas y pequeño material eléctrico.',
    'LED bulbs, torches and small electrical goods.',
    'bombilla, linterna, regleta', 'bulb, torch, power strip',
    'Bombillas, linternas y regletas.',
    'Bulbs, torches and power strips.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0205', '1', 'Ropa de trabajo', 'Workwear', Null, Null, Null,
    'Familia en preparación.',
    Null,
    Null, Null,
    Null,
    Null);
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('03', '0', 'Jardín y terraza', 'Garden & terrace', 'S', Null, 'C:\KOV\FOTOS\FAM_03.jpg',
    'Riego, macetas, huerto y muebles para vivir fuera de casa.',
    'Watering, pots, vegetable garden & outdoor furniture.',
    'jardín, terraza, huerto', 'garden, terrace, vegetable garden',
    'Todo para el jardín, la terraza y el huerto.',
    'Everything for garden, terrace and vegetable plot.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0301', '1', 'Riego', 'Watering', 'S', Null, 'C:\KOV\FOTOS\FAM_0301.jpg',
    'Regaderas, mangueras y programadores.',
    'Watering cans, hoses and timers.',
    'riego, regadera, manguera', 'watering can, hose',
    'Regaderas, mangueras y programadores de riego.',
    'Watering cans, hoses and timers.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0302', '1', 'Macetas y huerto', 'Pots and vegetable garden', 'S', Null, 'C:\KOV\FOTOS\FAM_0302.jpg',
    'Del balcón al bancal.',
    'From the balcony to the vegetable patch.',
    'macetas, huerto', 'pots, vegetable garden',
    'Macetas, jardineras, semillas y sustratos.',
    'Pots, planters, seeds and soil.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('030201', '2', 'Macetas y jardineras', 'Pots and planters', 'S', Null, 'C:\KOV\FOTOS\FAM_030201.jpg',
    'Terracota hecha a torno, madera tratada y macramé.',
    'Wheel-thrown terracotta, treated wood and macramé.',
    'maceta, jardinera, terracota', 'pot, planter, terracotta',
    'Macetas de terracota y jardineras de madera.',
    'Terracotta pots and wooden planters.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('030202', '2', 'Semillas y sustratos', 'Seeds and soil', 'S', Null, 'C:\KOV\FOTOS\FAM_030202.jpg',
    'Variedades tradicionales de la huerta, recogidas en la comarca.',
    'Traditional vegetable varieties grown in our region.',
    'semillas, sustrato', 'seeds, potting soil',
    'Semillas de huerta y sustratos.',
    'Vegetable seeds and potting soils.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0303', '1', 'Herramienta de jardín', 'Garden tools', 'S', Null, 'C:\KOV\FOTOS\FAM_0303.jpg',
    'Acero forjado y mangos de fresno.',
    'Forged steel and ash handles.',
    'tijera de podar, azada, pala', 'secateurs, hoe, spade',
    'Tijeras de podar, azadas, palas y guantes.',
    'Secateurs, hoes, trowels and gloves.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0304', '1', 'Muebles y sombra', 'Furniture and shade', 'S', Null, 'C:\KOV\FOTOS\FAM_0304.jpg',
    'Acacia de bosques certificados y tejidos que aguantan el sol.',
    'Acacia from certified forests and sun-proof fabrics.',
    'silla, mesa, sombrilla', 'chair, table, parasol',
    'Sillas, mesas y sombrillas de exterior.',
    'Outdoor chairs, tables and parasols.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0305', '1', 'Jardín para niños', 'Children''s garden', Null, ',1,000001,', 'C:\KOV\FOTOS\FAM_0305.jpg',
    'Herramienta de verdad, en tamaño pequeño, para niños y niñas a partir de 4 años.',
    'Real tools in small sizes: a child''s first vegetable patch, from 4 years.',
    'niños, huerto escolar', 'children, school garden',
    'Jardinería para los más pequeños.',
    'Gardening for the youngest.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('04', '0', 'Limpieza y orden', 'Cleaning and storage', 'S', Null, 'C:\KOV\FOTOS\FAM_04.jpg',
    'La casa limpia y cada cosa en su sitio.',
    'A clean home, and a place for everything.',
    'limpieza, orden, hogar', 'cleaning, storage, home',
    'Limpieza, colada y orden en casa.',
    'Cleaning, laundry and storage.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0401', '1', 'Limpieza', 'Cleaning', 'S', Null, 'C:\KOV\FOTOS\FAM_0401.jpg',
    'Fibras naturales y jabón de toda la vida.',
    'Natural fibres and old-fashioned soap.',
    'escoba, cubo, jabón', 'broom, bucket, soap',
    'Escobas, cubos y jabones.',
    'Brooms, buckets and soaps.');
INSERT INTO M_FAMILIA (CLAVE, NIVEL, DESCRIPCION, DESCRIPCION_EN, ACTIVOWEB, EMPRESASWEB, FOTO,
    NOTAS, NOTAS_EN, PALABRAS, PALABRAS_EN, RESUMEN, RESUMEN_EN)
VALUES ('0402', '1', 'Orden y colada', 'Storage and laundry', 'S', Null, 'C:\KOV\FOTOS\FAM_0402.jpg',
    'Tendederos, cestas y cajas.',
    'Clothes airers, baskets and boxes.',
    'tendedero, cesta, caja', 'clothes airer, basket, box',
    'Tendederos, cestas de mimbre y cajas.',
    'Clothes airers, wicker baskets and boxes.');
