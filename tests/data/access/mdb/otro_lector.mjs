// Writes all tables of an Access file as JSON, read by the npm package mdb-reader:
//   node otro_lector.mjs FOLDER_WITH_NODE_MODULES FILE
import { createRequire } from "module";
import fs from "fs";
import path from "path";
import { pathToFileURL } from "url";

const [carpeta, fichero] = process.argv.slice(2);
const require = createRequire(path.join(path.resolve(carpeta), "aqui.js"));
const { default: MDBReader } = await import(pathToFileURL(require.resolve("mdb-reader")).href);

function texto(valor) {
    if (valor === null || valor === undefined) return undefined;
    if (valor instanceof Uint8Array) return Buffer.from(valor).toString("hex");
    if (valor instanceof Date)
        return valor.toISOString().replace("T", " ").replace("Z", "").replace(".000", "");
    if (typeof valor === "boolean") return valor ? "1" : "0";
    return String(valor);
}

const lector = new MDBReader(fs.readFileSync(fichero));
const tablas = {};
for (const nombre of lector.getTableNames({ normalTables: true, systemTables: true, linkedTables: false })) {
    try {
        tablas[nombre] = lector.getTable(nombre).getData().map((fila) => {
            const celdas = {};
            for (const [columna, valor] of Object.entries(fila)) celdas[columna] = texto(valor);
            return celdas;
        });
    } catch (error) {
        tablas[nombre] = String(error);
    }
}
process.stdout.write(JSON.stringify(tablas));
