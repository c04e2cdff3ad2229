<?php
/** Reads the shop's own tables, as they stand; the page keeps nothing of its own. */
class Tienda
{
    /** Customer group of somebody who has not signed in. */
    const GRUPO_VISITANTE = 1;
    /** Groups 4 to 8 are the tariffs 1 to 5. */
    const GRUPO_TARIFA_1 = 4;

    private $bd;
    private $lang;

    public function __construct($lang)
    {
        mysqli_report(MYSQLI_REPORT_ERROR | MYSQLI_REPORT_STRICT);
        // The setting is a host, a host and a port, or a host and the path of a socket.
        $partes = explode(':', _DB_SERVER_, 2);
        $resto = isset($partes[1]) ? $partes[1] : '';
        $socket = $resto !== '' && $resto[0] === '/' ? $resto : null;
        $puerto = ctype_digit($resto) ? (int) $resto : 3306;
        $this->bd = new mysqli($partes[0], _DB_USER_, _DB_PASSWD_, _DB_NAME_, $puerto, $socket);
        $this->bd->set_charset('utf8mb4');
        $this->lang = $lang;
    }

    /** The rows of a query; "ps_" is the prefix and each "?" takes one value. */
    private function filas($sql, array $valores = array())
    {
        $orden = $this->bd->prepare(str_replace('ps_', _DB_PREFIX_, $sql));
        if ($valores) {
            $orden->bind_param(str_repeat('s', count($valores)), ...$valores);
        }
        $orden->execute();
        return $orden->get_result()->fetch_all(MYSQLI_ASSOC);
    }

    private function valor($sql, array $valores = array())
    {
        $filas = $this->filas($sql, $valores);
        return $filas ? reset($filas[0]) : null;
    }

    public function nombre()
    {
        return (string) $this->valor('SELECT name FROM ps_shop WHERE id_shop = 1');
    }

    /** The version stands under a name that begins like a prefix, so it goes in as a value. */
    public function version()
    {
        return (string) $this->valor('SELECT value FROM ps_configuration WHERE name = ?',
            array('ps_version_db'));
    }

    public function idiomas()
    {
        return $this->filas('SELECT id_lang, name, iso_code FROM ps_lang WHERE active = 1 ORDER BY id_lang');
    }

    /** The tree from the home category's children down, in its order, with the products below each. */
    public function categorias()
    {
        return $this->filas(
            'SELECT c.id_category, c.id_parent, c.level_depth, c.nleft, c.nright, l.name, l.description,
                (SELECT COUNT(DISTINCT cp.id_product) FROM ps_category h
                    JOIN ps_category_product cp ON cp.id_category = h.id_category
                    JOIN ps_product p ON p.id_product = cp.id_product AND p.active = 1
                    WHERE h.nleft BETWEEN c.nleft AND c.nright) AS cuantos
             FROM ps_category c
             JOIN ps_category_lang l ON l.id_category = c.id_category AND l.id_shop = 1 AND l.id_lang = ?
             WHERE c.id_category > 2 AND c.active = 1
             ORDER BY c.nleft', array($this->lang));
    }

    private function productos($condicion, array $valores, $orden = 'l.name')
    {
        $filas = $this->filas(
            "SELECT p.id_product, p.reference, p.supplier_reference, p.price, p.minimal_quantity, p.weight,
                p.id_category_default, p.id_tax_rules_group, p.date_upd, l.name, l.description,
                l.description_short, l.meta_title, l.meta_description, l.meta_keywords, l.link_rewrite,
                l.available_now, m.name AS marca,
                (SELECT i.id_image FROM ps_image i WHERE i.id_product = p.id_product
                    ORDER BY i.position LIMIT 1) AS id_image,
                (SELECT s.quantity FROM ps_stock_available s WHERE s.id_product = p.id_product
                    AND s.id_product_attribute = 0 LIMIT 1) AS cantidad,
                (SELECT COUNT(*) FROM ps_product_attribute a WHERE a.id_product = p.id_product) AS variantes
             FROM ps_product p
             JOIN ps_product_lang l ON l.id_product = p.id_product AND l.id_shop = 1 AND l.id_lang = ?
             LEFT JOIN ps_manufacturer m ON m.id_manufacturer = p.id_manufacturer
             WHERE p.active = 1 AND $condicion ORDER BY $orden",
            array_merge(array($this->lang), $valores));
        $precios = $this->preciosEspeciales(array_column($filas, 'id_product'));
        foreach ($filas as &$fila) {
            $propios = isset($precios[$fila['id_product']]) ? $precios[$fila['id_product']] : array();
            $fila['especiales'] = $propios;
            $fila['oferta'] = $this->oferta($propios, self::GRUPO_VISITANTE);
        }
        return $filas;
    }

    public function deCategoria($nleft, $nright)
    {
        return $this->productos('p.id_product IN (SELECT cp.id_product FROM ps_category_product cp
            JOIN ps_category c ON c.id_category = cp.id_category WHERE c.nleft BETWEEN ? AND ?)',
            array($nleft, $nright), 'p.reference');
    }

    public function favoritos()
    {
        return $this->productos('p.id_product IN (SELECT id_product FROM ps_category_product
            WHERE id_category = 2)', array());
    }

    public function enOferta()
    {
        $todos = $this->productos('p.id_product IN (SELECT id_product FROM ps_specific_price
            WHERE id_group = ?)', array(self::GRUPO_VISITANTE));
        return array_values(array_filter($todos, function ($p) {
            return $p['oferta'] !== null;
        }));
    }

    public function deEtiqueta($id)
    {
        return $this->productos('p.id_product IN (SELECT id_product FROM ps_product_tag WHERE id_tag = ?)',
            array($id));
    }

    public function busca($texto)
    {
        $patron = '%' . addcslashes($texto, '\\%_') . '%';
        return $this->productos('(l.name LIKE ? OR l.description LIKE ? OR p.reference LIKE ?
            OR p.supplier_reference LIKE ?)', array_fill(0, 4, $patron));
    }

    public function producto($id)
    {
        $filas = $this->productos('p.id_product = ?', array($id));
        return $filas ? $filas[0] : null;
    }

    private function preciosEspeciales(array $ids)
    {
        if (!$ids) {
            return array();
        }
        $marcas = implode(',', array_fill(0, count($ids), '?'));
        $porProducto = array();
        foreach ($this->filas("SELECT id_product, id_group, price, reduction, reduction_type, `from`, `to`
            FROM ps_specific_price WHERE id_product IN ($marcas) ORDER BY id_specific_price", $ids) as $fila) {
            $fila['final'] = $fila['reduction_type'] === 'percentage'
                ? $fila['price'] * (1 - $fila['reduction'])
                : $fila['price'] - $fila['reduction'];
            $fila['fechas'] = substr($fila['from'], 0, 4) !== '0000';
            $porProducto[$fila['id_product']][] = $fila;
        }
        return $porProducto;
    }

    /** The dated row of that group that holds today, or null. */
    private function oferta(array $especiales, $grupo)
    {
        $hoy = date('Y-m-d');
        foreach ($especiales as $fila) {
            if ((int) $fila['id_group'] === $grupo && $fila['fechas']
                && substr($fila['from'], 0, 10) <= $hoy && $hoy <= substr($fila['to'], 0, 10)) {
                return $fila;
            }
        }
        return null;
    }

    public function imagenes($id)
    {
        return $this->filas('SELECT i.id_image, l.legend FROM ps_image i
            LEFT JOIN ps_image_lang l ON l.id_image = i.id_image AND l.id_lang = ?
            WHERE i.id_product = ? ORDER BY i.position, i.id_image', array($this->lang, $id));
    }

    public function etiquetas($id)
    {
        return $this->filas('SELECT t.id_tag, t.name FROM ps_tag t
            JOIN ps_product_tag pt ON pt.id_tag = t.id_tag
            WHERE pt.id_product = ? AND t.id_lang = ? ORDER BY t.name', array($id, $this->lang));
    }

    /** Tags of the language with the products of each, the most used first. */
    public function nube()
    {
        return $this->filas('SELECT t.id_tag, t.name, COUNT(*) AS cuantos FROM ps_tag t
            JOIN ps_product_tag pt ON pt.id_tag = t.id_tag WHERE t.id_lang = ?
            GROUP BY t.id_tag, t.name ORDER BY cuantos DESC, t.name', array($this->lang));
    }

    public function nombreEtiqueta($id)
    {
        return $this->valor('SELECT name FROM ps_tag WHERE id_tag = ?', array($id));
    }

    public function combinaciones($id)
    {
        return $this->filas("SELECT pa.id_product_attribute, pa.price, pa.default_on,
                GROUP_CONCAT(CONCAT(gl.public_name, ': ', al.name) ORDER BY a.id_attribute_group
                    SEPARATOR ', ') AS nombre,
                (SELECT s.quantity FROM ps_stock_available s
                    WHERE s.id_product_attribute = pa.id_product_attribute LIMIT 1) AS cantidad
             FROM ps_product_attribute pa
             JOIN ps_product_attribute_combination c ON c.id_product_attribute = pa.id_product_attribute
             JOIN ps_attribute a ON a.id_attribute = c.id_attribute
             JOIN ps_attribute_lang al ON al.id_attribute = a.id_attribute AND al.id_lang = ?
             JOIN ps_attribute_group_lang gl ON gl.id_attribute_group = a.id_attribute_group AND gl.id_lang = ?
             WHERE pa.id_product = ?
             GROUP BY pa.id_product_attribute, pa.price, pa.default_on
             ORDER BY pa.id_product_attribute", array($this->lang, $this->lang, $id));
    }

    public function adjuntos($id)
    {
        return $this->filas('SELECT a.file, a.file_name, l.description FROM ps_attachment a
            JOIN ps_product_attachment pa ON pa.id_attachment = a.id_attachment
            LEFT JOIN ps_attachment_lang l ON l.id_attachment = a.id_attachment AND l.id_lang = ?
            WHERE pa.id_product = ? ORDER BY a.file_name', array($this->lang, $id));
    }

    public function marcas()
    {
        return $this->filas('SELECT m.name, (SELECT COUNT(*) FROM ps_product p
                WHERE p.id_manufacturer = m.id_manufacturer) AS cuantos
            FROM ps_manufacturer m ORDER BY m.name');
    }

    public function vales()
    {
        return $this->filas('SELECT code, description, reduction_percent, reduction_amount, minimum_amount,
            quantity, date_to FROM ps_cart_rule ORDER BY code');
    }

    public function atributos()
    {
        return $this->filas("SELECT g.name, GROUP_CONCAT(al.name ORDER BY a.position SEPARATOR ', ') AS valores
            FROM ps_attribute_group_lang g
            LEFT JOIN ps_attribute a ON a.id_attribute_group = g.id_attribute_group
            LEFT JOIN ps_attribute_lang al ON al.id_attribute = a.id_attribute AND al.id_lang = ?
            WHERE g.id_lang = ? GROUP BY g.id_attribute_group, g.name ORDER BY g.id_attribute_group",
            array($this->lang, $this->lang));
    }

    public function olvidaIndices()
    {
        $this->bd->query('UPDATE ' . _DB_PREFIX_ . 'product SET indexed = 0');
    }

    /** Marks so many products as indexed and gives how many it found. */
    public function indexa($cuantos)
    {
        $this->bd->query('UPDATE ' . _DB_PREFIX_ . 'product SET indexed = 1 WHERE indexed = 0 LIMIT '
            . (int) $cuantos);
        return $this->bd->affected_rows;
    }

    /** Rows of the main tables. */
    public function recuento()
    {
        $tablas = array('category' => 'Categorías', 'product' => 'Productos',
            'product_lang' => 'Textos de productos', 'category_product' => 'Productos en categorías',
            'specific_price' => 'Precios especiales', 'tag' => 'Etiquetas', 'image' => 'Imágenes',
            'product_attribute' => 'Combinaciones', 'stock_available' => 'Filas de existencias',
            'attachment' => 'Adjuntos', 'manufacturer' => 'Fabricantes', 'cart_rule' => 'Vales');
        $cuenta = array();
        foreach ($tablas as $tabla => $nombre) {
            $cuenta[$nombre] = (int) $this->valor("SELECT COUNT(*) FROM ps_$tabla");
        }
        return $cuenta;
    }
}
