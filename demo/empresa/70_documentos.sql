INSERT INTO GESTION_DOC (TIPODOC, TIPO, CLAVE, RUTA, DESCRIPCION) VALUES ('AR', 'W', '010101001', 'C:\KOV\DOC\curado-del-hierro.pdf', 'Cómo curar una sartén de hierro');
INSERT INTO GESTION_DOC (TIPODOC, TIPO, CLAVE, RUTA, DESCRIPCION) VALUES ('AR', 'W', '010103001', 'C:\KOV\DOC\curado-del-hierro.pdf', 'Cómo cuidar una paellera pulida');
INSERT INTO GESTION_DOC (TIPODOC, TIPO, CLAVE, RUTA, DESCRIPCION) VALUES ('AR', 'W', '010102001', 'C:\KOV\DOC\cuidado-del-barro.pdf', 'Primer uso y cuidado del barro');
INSERT INTO GESTION_DOC (TIPODOC, TIPO, CLAVE, RUTA, DESCRIPCION) VALUES ('AR', 'W', '010302003', 'C:\KOV\DOC\cuidado-del-barro.pdf', 'Primer uso y cuidado del barro');
INSERT INTO GESTION_DOC (TIPODOC, TIPO, CLAVE, RUTA, DESCRIPCION) VALUES ('AR', 'W', '0203002', 'C:\KOV\DOC\plantilla-cerradura.pdf', 'Montaje de la cerradura');
INSERT INTO GESTION_DOC (TIPODOC, TIPO, CLAVE, RUTA, DESCRIPCION) VALUES ('AR', 'W', '030202001', 'C:\KOV\DOC\calendario-de-siembra.pdf', 'Calendario de siembra');
INSERT INTO GESTION_DOC (TIPODOC, TIPO, CLAVE, RUTA, DESCRIPCION) VALUES ('AR', 'W', '0305001', 'C:\KOV\DOC\calendario-de-siembra.pdf', 'Calendario de siembra');
INSERT INTO GESTION_DOC (TIPODOC, TIPO, CLAVE, RUTA, DESCRIPCION) VALUES ('AR', 'I', '010101001', 'C:\KOV\DOC\escandallo-010101001.pdf', 'Escandallo (interno)');
INSERT INTO GESTION_DOC (TIPODOC, TIPO, CLAVE, RUTA, DESCRIPCION) VALUES ('CL', 'W', '010101001', 'C:\KOV\DOC\contrato-cliente.pdf', 'Contrato de un cliente');
