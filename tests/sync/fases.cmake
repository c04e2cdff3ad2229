# The phases of a run, one test source for each unit.
kov_prueba(sync_fases_test
    FUENTES adjuntos_test.cpp atributos_test.cpp combinaciones_test.cpp existencias_test.cpp
        fotos_test.cpp imagenes_test.cpp marcas_test.cpp retirados_test.cpp vales_test.cpp
    BIBLIOTECAS sync)

# What only the management database's answer shows.
kov_prueba(sync_fases_sobre_base_test FUENTES fases_sobre_base_test.cpp BIBLIOTECAS sync data_access)
